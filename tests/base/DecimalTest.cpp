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

} // namespace
} // namespace tavex2::test
