#pragma once

#include <cstdint>
#include <optional>

namespace tavex2 {

/// A colour, 0..255 each.
struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Rgb&, const Rgb&) = default;
};

/// Number of colours, after which they repeat.
inline constexpr int traceColourCount = 16;

/// The colour of the trace at a position of the channel list (0 is the first channel), in graphs and legend alike.
Rgb traceColour(int position);

/// The darker colour to draw beneath and around a trace that would hardly be seen on a white ground by itself; no value
/// where the trace's own colour is strong enough.
std::optional<Rgb> traceOutline(int position);

} // namespace tavex2
