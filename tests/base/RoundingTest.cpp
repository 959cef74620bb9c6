#include "base/Rounding.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace tavex2::test {
namespace {

TEST(RoundHalfEvenTest, TakesHalvesToTheEvenNeighbour) {
    EXPECT_EQ(roundHalfEven(0.5), 0);
    EXPECT_EQ(roundHalfEven(1.5), 2);
    EXPECT_EQ(roundHalfEven(2.5), 2);
    EXPECT_EQ(roundHalfEven(999.5), 1000);
    EXPECT_EQ(roundHalfEven(1000.5), 1000);
    EXPECT_EQ(roundHalfEven(-0.5), 0);
    EXPECT_EQ(roundHalfEven(-1.5), -2);
    EXPECT_EQ(roundHalfEven(-2.5), -2);
}

TEST(RoundHalfEvenTest, TakesEverythingElseToTheNearest) {
    EXPECT_EQ(roundHalfEven(0.0), 0);
    EXPECT_EQ(roundHalfEven(999.6), 1000);
    EXPECT_EQ(roundHalfEven(0.49999999999999994), 0);
    EXPECT_EQ(roundHalfEven(-0.50000000000000011), -1);
    EXPECT_EQ(roundHalfEven(4503599627370497.0), 4503599627370497);
}

RC_GTEST_PROP(RoundHalfEvenTest, NeverMovesMoreThanAHalf, (int whole, int thousandths)) {
    const double x = whole + (thousandths % 1000) / 1000.0;
    RC_ASSERT(std::abs(static_cast<double>(roundHalfEven(x)) - x) <= 0.5);
}

TEST(SaturatedInt16Test, RoundsHalvesToEvenAndStopsAtTheEndsOfTheRange) {
    EXPECT_EQ(saturatedInt16(2.5), 2);
    EXPECT_EQ(saturatedInt16(-3.5), -4);
    EXPECT_EQ(saturatedInt16(32767.4), 32767);
    EXPECT_EQ(saturatedInt16(1e300), 32767);
    EXPECT_EQ(saturatedInt16(-40000), -32768);
}

} // namespace
} // namespace tavex2::test
