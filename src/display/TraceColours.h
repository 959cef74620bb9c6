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

/// The average of overlaid trials, which is no trial's: an orange that is none of the sixteen.
inline constexpr Rgb averageColour{0xD9, 0x5F, 0x02};

/// The darker colour to draw beneath and around a trace of this colour that would hardly be seen on a white ground by
/// itself; no value where the colour is strong enough.
std::optional<Rgb> traceOutline(Rgb colour);

} // namespace tavex2
