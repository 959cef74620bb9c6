#include "base/Bool16.h"

#include <gtest/gtest.h>

namespace tavex2::test {
namespace {

TEST(Bool16Test, IsFalseAndZeroAtFirst) {
    EXPECT_FALSE(Bool16());
    EXPECT_EQ(Bool16().raw(), 0);
}

TEST(Bool16Test, HoldsTrueAsMinusOne) {
    const Bool16 yes = true;
    EXPECT_TRUE(yes);
    EXPECT_EQ(yes.raw(), -1);
    EXPECT_EQ(Bool16(false).raw(), 0);
    EXPECT_EQ(sizeof(Bool16), 2U);
}

TEST(Bool16Test, CountsAnyOtherValueOfAFileAsTrueAndKeepsIt) {
    const Bool16 odd = Bool16::fromRaw(256);
    EXPECT_TRUE(odd);
    EXPECT_EQ(odd.raw(), 256);
    EXPECT_NE(odd, Bool16(true));
}

} // namespace
} // namespace tavex2::test
