#include "display/TraceColours.h"

#include <gtest/gtest.h>

#include <array>

namespace tavex2 {
namespace {

constexpr std::array<std::uint32_t, 16> sixteen{0x000000, 0xFF0000, 0x0000FF, 0x00FF00, 0xC0C0C0, 0x800000,
                                                0x000080, 0x008000, 0xE0E0E0, 0x00FFFF, 0xFFFF00, 0xFF80FF,
                                                0x808080, 0x008000, 0x808000, 0x800080};

std::uint32_t number(Rgb colour) {
    return static_cast<std::uint32_t>(colour.red << 16 | colour.green << 8 | colour.blue);
}

TEST(TraceColours, AreTheSixteenInOrder) {
    for (int position = 0; position < 16; ++position)
        EXPECT_EQ(number(traceColour(position)), sixteen[static_cast<std::size_t>(position)]) << position;
}

TEST(TraceColours, RepeatAfterSixteen) {
    for (int position = 16; position < 64; ++position)
        EXPECT_EQ(traceColour(position), traceColour(position - 16)) << position;
}

TEST(TraceOutline, GoesRoundTheColoursThatFadeIntoWhiteAndNoOthers) {
    for (int position = 0; position < 16; ++position) {
        const bool light = position == 3 || position == 4 || position == 8 || position == 9 || position == 10;
        EXPECT_EQ(traceOutline(traceColour(position)).has_value(), light) << position;
    }
}

TEST(TraceOutline, IsDarkerThanItsTrace) {
    for (int position = 0; position < 16; ++position) {
        const auto outline = traceOutline(traceColour(position));
        if (!outline) continue;
        const Rgb colour = traceColour(position);
        EXPECT_LT(outline->red + outline->green + outline->blue, (colour.red + colour.green + colour.blue) * 2 / 3);
    }
}

TEST(AverageColour, IsNoTrialsAndNeedsNoOutline) {
    for (int position = 0; position < 16; ++position)
        EXPECT_NE(traceColour(position), averageColour) << position;
    EXPECT_FALSE(traceOutline(averageColour).has_value());
}

} // namespace
} // namespace tavex2
