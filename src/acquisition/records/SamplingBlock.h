#pragma once

#include "acquisition/records/AcqSettings.h"

#include <array>
#include <cstddef>
#include <span>

namespace tavex2 {

/// Calls `visit(name, field)` for every sampling setting in the order of the files, setup files and stimulus files
/// alike. `Sampling` is SamplingSettings or const SamplingSettings.
template <class Sampling, class Visit>
void forEachSampling(Sampling& sampling, Visit&& visit) {
    visit("DIOMask", sampling.DIOMask);
    visit("DIOLatency", sampling.DIOLatency);
    visit("DIOState", sampling.DIOState);
    visit("Channels", sampling.Channels);
    visit("Rate", sampling.Rate);
    visit("Duration", sampling.Duration);
    visit("UpperVolts", sampling.UpperVolts);
    visit("LowerVolts", sampling.LowerVolts);
    visit("NumChannels", sampling.NumChannels);
    visit("NumSamples", sampling.NumSamples);
    visit("Repeat", sampling.Repeat);
}

/// Size of the sampling settings as stimulus files hold them: field after field, little-endian, without padding.
inline constexpr std::size_t samplingBlockBytes = 107;

std::array<std::byte, samplingBlockBytes> encodeSampling(const SamplingSettings& sampling);
/// Exact for every value of every byte.
SamplingSettings decodeSampling(std::span<const std::byte, samplingBlockBytes> bytes);

} // namespace tavex2
