#include "base/NumberFormat.h"

#include <gtest/gtest.h>

#include <limits>

namespace tavex2 {
namespace {

TEST(NumberFormat, ShowsTheUnitAndTheDigitsAskedFor) {
    EXPECT_EQ(formatNumber(2, "0 \"s\""), "2 s");
    EXPECT_EQ(formatNumber(-10, "0 \"V\""), "-10 V");
    EXPECT_EQ(formatNumber(1000, "0.\" Hz\""), "1000 Hz");
    EXPECT_EQ(formatNumber(3, "00."), "03");
    EXPECT_EQ(formatNumber(1.25, "0.0\" V\""), "1.3 V");
    EXPECT_EQ(formatNumber(0.5, "#.000 \"V\""), ".500 V");
    EXPECT_EQ(formatNumber(12.5, "#.000 \"V\""), "12.500 V");
    EXPECT_EQ(formatNumber(2, ".### \"s\""), "2 s");
    EXPECT_EQ(formatNumber(0.25, "0.### \"s\""), "0.25 s");
    EXPECT_EQ(formatNumber(10, "0.\" %\""), "10 %");
}

TEST(NumberFormat, RoundsTiesAwayFromZeroAndGivesZeroNoSign) {
    EXPECT_EQ(formatNumber(0.5, "0 \"s\""), "1 s");
    EXPECT_EQ(formatNumber(-2.5, "0"), "-3");
    EXPECT_EQ(formatNumber(-0.4, "0 \"V\""), "0 V");
}

TEST(NumberFormat, NeverShowsAnEmptyNumber) {
    EXPECT_EQ(formatNumber(0, "##. \"s\""), "0 s");
}

TEST(NumberFormat, ReadsNumbersWithAndWithoutTheirUnit) {
    EXPECT_EQ(parseNumber("0.5", "0 \"s\""), 0.5);
    EXPECT_EQ(parseNumber(" 0.5 s ", "0 \"s\""), 0.5);
    EXPECT_EQ(parseNumber("0.5s", "0 \"s\""), 0.5);
    EXPECT_EQ(parseNumber("-1e3 mV", "0 \"mV\""), -1000);
    EXPECT_EQ(parseNumber("+2,75", "0 \"V\""), 2.75);
    EXPECT_EQ(parseNumber("10 %", "0.\" %\""), 10);
}

TEST(NumberFormat, RefusesWhatIsNoNumber) {
    for (const char* text : {"", " ", "s", "1 2", "abc", "1e999", "nan", "inf", "0.5 V"})
        EXPECT_FALSE(parseNumber(text, "0 \"s\"")) << text;
}

TEST(NumberFormat, ReadsBackWhatItShows) {
    for (const char* format : {"0.0\" V\"", "#.000 \"V\"", "0 \"ms\"", "0.### \"s\""})
        for (const double value : {0.0, 3.0, -17.0, 250.0})
            EXPECT_EQ(parseNumber(formatNumber(value, format), format), value) << format;
}

TEST(NumberFormat, DoesNotHideWhatIsNotFinite) {
    EXPECT_EQ(formatNumber(std::numeric_limits<double>::infinity(), "0 \"s\""), "inf");
}

} // namespace
} // namespace tavex2
