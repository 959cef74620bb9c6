#include "base/Decimal.h"

#include <gtest/gtest.h>

#include <limits>

namespace tavex2::test {
namespace {

TEST(ZeroPaddedTest, FillsWithLeadingZeros) {
    EXPECT_EQ(zeroPadded(0, 4), "0000");
    EXPECT_EQ(zeroPadded(7, 4), "0007");
    EXPECT_EQ(zeroPadded(9999, 4), "9999");
}

TEST(ZeroPaddedTest, WritesLongerNumbersInFull) {
    EXPECT_EQ(zeroPadded(12345, 4), "12345");
    EXPECT_EQ(zeroPadded(7, 0), "7");
}

TEST(ZeroPaddedTest, DoesNotCountTheSignAsADigit) {
    EXPECT_EQ(zeroPadded(-7, 4), "-0007");
    EXPECT_EQ(zeroPadded(std::numeric_limits<std::int64_t>::min(), 4), "-9223372036854775808");
}

TEST(FixedDecimalTest, RoundsTheExactBinaryValueTiesAwayFromZero) {
    EXPECT_EQ(fixedDecimal(0.5, 0), "1");
    EXPECT_EQ(fixedDecimal(2.5, 0), "3");
    EXPECT_EQ(fixedDecimal(-2.5, 0), "-3");
    EXPECT_EQ(fixedDecimal(0.125, 2), "0.13");
    EXPECT_EQ(fixedDecimal(0.15, 1), "0.1"); // the double is a little below 0.15
    EXPECT_EQ(fixedDecimal(2.675, 2), "2.67");
    EXPECT_EQ(fixedDecimal(0.49999999999999994, 0), "0");
}

TEST(FixedDecimalTest, CarriesAndKeepsTheDecimalsAskedFor) {
    EXPECT_EQ(fixedDecimal(9.999, 2), "10.00");
    EXPECT_EQ(fixedDecimal(99.5, 0), "100");
    EXPECT_EQ(fixedDecimal(1.0, 5), "1.00000");
    EXPECT_EQ(fixedDecimal(1e22, 1), "10000000000000000000000.0");
    EXPECT_EQ(fixedDecimal(std::numeric_limits<double>::max(), 100).size(), 309U + 1U + 100U);
}

TEST(FixedDecimalTest, GivesZeroNoSign) {
    EXPECT_EQ(fixedDecimal(-0.0, 1), "0.0");
    EXPECT_EQ(fixedDecimal(-0.04, 1), "0.0");
    EXPECT_EQ(fixedDecimal(-0.05, 1), "-0.1"); // the double is a little beyond
}

TEST(FixedDecimalTest, NamesWhatIsNotFinite) {
    EXPECT_EQ(fixedDecimal(std::numeric_limits<double>::quiet_NaN(), 2), "nan");
    EXPECT_EQ(fixedDecimal(-std::numeric_limits<double>::infinity(), 2), "-inf");
}

} // namespace
} // namespace tavex2::test
