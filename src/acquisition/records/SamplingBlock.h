#pragma once

#include "acquisition/records/AcqSettings.h"

#include <array>
#include <cstddef>
#include <span>

namespace tavex2 {

/// Size of the sampling settings as stimulus files hold them: field after field, little-endian, without padding.
inline constexpr std::size_t samplingBlockBytes = 107;

std::array<std::byte, samplingBlockBytes> encodeSampling(const SamplingSettings& sampling);
/// Exact for every value of every byte.
SamplingSettings decodeSampling(std::span<const std::byte, samplingBlockBytes> bytes);

} // namespace tavex2
