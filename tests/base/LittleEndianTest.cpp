#include "base/LittleEndian.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace tavex2::test {
namespace {

using testing::ElementsAre;

template <class... Values>
auto bytes(Values... values) {
    return ElementsAre(std::byte(values)...);
}

TEST(LittleEndianTest, PutsTheLeastSignificantByteFirst) {
    EXPECT_THAT(littleEndianBytes(std::int16_t{-2}), bytes(0xFE, 0xFF));
    EXPECT_THAT(littleEndianBytes(std::int32_t{0x01020304}), bytes(4, 3, 2, 1));
    EXPECT_THAT(littleEndianBytes(1.0F), bytes(0, 0, 0x80, 0x3F));
    EXPECT_THAT(littleEndianBytes(-2.0), bytes(0, 0, 0, 0, 0, 0, 0, 0xC0));
}

TEST(LittleEndianTest, ReadsBackWhatItWrote) {
    EXPECT_EQ(fromLittleEndian<std::int32_t>(littleEndianBytes(std::numeric_limits<std::int32_t>::min())),
              std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(fromLittleEndian<double>(littleEndianBytes(0.1)), 0.1);
    EXPECT_TRUE(std::isnan(fromLittleEndian<float>(littleEndianBytes(std::numeric_limits<float>::quiet_NaN()))));
}

} // namespace
} // namespace tavex2::test
