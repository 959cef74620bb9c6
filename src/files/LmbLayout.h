#pragma once

#include "acquisition/records/LmbHeader.h"
#include "base/Result.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace tavex2 {

// The binary trial file (.lmb), little-endian without padding:
//   identification text   80 bytes
//   LmbHeader           3502
//   LmbInfoA             224
//   LmbInfoB             324
//   TrialComments        244
//   times in seconds       4 x samples, float32
//   one block a channel    4 x samples, float32, volts

inline constexpr std::size_t lmbIdentificationBytes = 80;
inline constexpr std::size_t lmbRecordBytes = 3502 + 224 + 324 + 244;
inline constexpr std::string_view lmbIdentification = "Lumidor2 binary file. Version 2.00";
inline constexpr std::string_view lmbSignature = "Lumidor2";

/// The records between identification and samples.
struct LmbRecords {
    LmbHeader header;
    LmbInfoA infoA{};
    LmbInfoB infoB{};
    TrialComments comments{};
};

/// The records as the file holds them, and back; exact for every value of every byte.
std::array<std::byte, lmbRecordBytes> encodeLmbRecords(const LmbRecords& records);
LmbRecords decodeLmbRecords(std::span<const std::byte, lmbRecordBytes> bytes);

/// The size of the file of such a trial in bytes. Error InvalidValue when the format cannot hold it: it takes
/// 1 to 64 channels of 1 to 2147483647 samples.
Result<std::uint64_t> lmbFileBytes(int channels, std::int64_t samples);

} // namespace tavex2
