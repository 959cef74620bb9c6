#pragma once

#include "base/FixedText.h"

#include <array>
#include <cstdint>
#include <string>

namespace tavex2 {

/// Number of slots of a trial file's header: slot 0 is the time column, slot k the k-th listed channel.
inline constexpr int lmbSlots = 65;

/// Most channels that a trial can have: one per slot above the time column.
inline constexpr int mostChannels = lmbSlots - 1;

/// The header of a binary trial file; its Labels and Units double as the program's channel-label table.
/// Field order and widths are those of the file (little-endian, no padding, 3502 bytes).
struct LmbHeader {
    FixedText<100> Title;
    std::int16_t NumChannels = 0;
    std::int32_t NumSamples = 0;
    double Rate = 0;     ///< Hz
    double Duration = 0; ///< s
    std::array<std::int16_t, lmbSlots> ChannelOn{};
    std::array<std::int16_t, lmbSlots> ChannelNumber{};
    std::array<double, lmbSlots> ChannelRate{};
    std::array<double, lmbSlots> ChannelScale{};
    std::array<double, lmbSlots> ChannelOffset{};
    std::array<std::int16_t, lmbSlots> ChannelIndexA{};
    std::array<std::int16_t, lmbSlots> ChannelIndexB{};
    std::array<FixedText<10>, lmbSlots> Labels{};
    std::array<FixedText<10>, lmbSlots> Units{};

    friend bool operator==(const LmbHeader&, const LmbHeader&) = default;
};

/// What a channel (0..63) is called and measured in, Windows-1252: what its slot says, or "Channel 00" and so on and
/// "V" where nothing was ever set.
std::string labelOf(const LmbHeader& header, int channel);
std::string channelUnitOf(const LmbHeader& header, int channel);

/// Two records of the sibling analysis program, carried byte for byte from a loaded file to the next saved one.
using LmbInfoA = std::array<char, 224>;
using LmbInfoB = std::array<char, 324>;

/// The four comment lines stored with a trial.
using TrialComments = std::array<FixedText<61>, 4>;

} // namespace tavex2
