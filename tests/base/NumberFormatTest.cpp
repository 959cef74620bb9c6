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

TEST(NumberFormat, DoesNotHideWhatIsNotFinite) {
    EXPECT_EQ(formatNumber(std::numeric_limits<double>::infinity(), "0 \"s\""), "inf");
}

} // namespace
} // namespace tavex2
