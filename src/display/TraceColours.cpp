#include "display/TraceColours.h"

#include <array>
#include <cmath>

namespace tavex2 {

namespace {

// Positions 7 and 13 are the same dark green on purpose.
constexpr std::array<Rgb, traceColourCount> colours{{
    {0x00, 0x00, 0x00}, // black
    {0xFF, 0x00, 0x00}, // red
    {0x00, 0x00, 0xFF}, // blue
    {0x00, 0xFF, 0x00}, // green
    {0xC0, 0xC0, 0xC0}, // silver
    {0x80, 0x00, 0x00}, // maroon
    {0x00, 0x00, 0x80}, // navy
    {0x00, 0x80, 0x00}, // dark green
    {0xE0, 0xE0, 0xE0}, // light grey
    {0x00, 0xFF, 0xFF}, // cyan
    {0xFF, 0xFF, 0x00}, // yellow
    {0xFF, 0x80, 0xFF}, // pink
    {0x80, 0x80, 0x80}, // grey
    {0x00, 0x80, 0x00}, // dark green
    {0x80, 0x80, 0x00}, // olive
    {0x80, 0x00, 0x80}, // purple
}};

/// A thin line with less contrast than this can hardly be found.
constexpr double leastContrast = 2.0;

double linearLight(std::uint8_t value) {
    const double share = value / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

/// Contrast with white as accessibility guidelines define it, 1 (none) to 21 (black).
double contrastWithWhite(Rgb colour) {
    const double luminance =
        0.2126 * linearLight(colour.red) + 0.7152 * linearLight(colour.green) + 0.0722 * linearLight(colour.blue);
    return 1.05 / (luminance + 0.05);
}

} // namespace

Rgb traceColour(int position) {
    return colours[static_cast<std::size_t>(position) % colours.size()];
}

std::optional<Rgb> traceOutline(Rgb colour) {
    if (contrastWithWhite(colour) >= leastContrast) return std::nullopt;
    const auto darker = [](std::uint8_t value) { return static_cast<std::uint8_t>(value * 55 / 100); };
    return Rgb{darker(colour.red), darker(colour.green), darker(colour.blue)};
}

} // namespace tavex2
