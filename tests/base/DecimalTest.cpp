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

TEST(GeneralDecimalTest, KeepsTheDigitsThatCount) {
    EXPECT_EQ(generalDecimal(500, 15), "500");
    EXPECT_EQ(generalDecimal(0.1, 15), "0.1");
    EXPECT_EQ(generalDecimal(1234.5678, 4), "1235");
    EXPECT_EQ(generalDecimal(-2.5e-7, 15), "-2.5e-07");
    EXPECT_EQ(generalDecimal(1e20, 15), "1e+20");
    EXPECT_EQ(generalDecimal(0, 15), "0");
    EXPECT_EQ(generalDecimal(std::numeric_limits<double>::infinity(), 15), "inf");
}

TEST(PlainNumberTest, IsTheShortestTextThatReadsBack) {
    EXPECT_EQ(plainNumber(100000), "100000");
    EXPECT_EQ(plainNumber(0.1), "0.1");
    EXPECT_EQ(plainNumber(-1e-7), "-0.0000001");
    EXPECT_EQ(plainNumber(1e22), "10000000000000000000000");
    EXPECT_EQ(plainNumber(-std::numeric_limits<double>::denorm_min()).size(), 3U + 324U);
    EXPECT_EQ(plainNumber(std::numeric_limits<double>::quiet_NaN()), "not a finite number");
}

TEST(ShortestDoubleTest, PrintsAsTheNumberOfSinglePrecisionDoes) {
    EXPECT_EQ(shortestDouble(0.05F), 0.05);
    EXPECT_EQ(shortestDouble(-9.999F), -9.999);
    EXPECT_EQ(shortestDouble(2.0F), 2.0);
    EXPECT_EQ(static_cast<float>(shortestDouble(1.0F / 3.0F)), 1.0F / 3.0F);
    EXPECT_EQ(shortestDouble(std::numeric_limits<float>::infinity()), std::numeric_limits<double>::infinity());
}

} // namespace
} // namespace tavex2::test
