#include "display/TickText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>

namespace tavex2 {
namespace {

TEST(TickText, HasTheDigitsOfTheStep) {
    EXPECT_EQ(tickText(0, 0.5), "0.0");
    EXPECT_EQ(tickText(1.5, 0.5), "1.5");
    EXPECT_EQ(tickText(2, 0.5), "2.0");
    EXPECT_EQ(tickText(7.5, 2.5), "7.5");
    EXPECT_EQ(tickText(-0.002, 0.002), "-0.002");
    EXPECT_EQ(tickText(4, 2), "4");
    EXPECT_EQ(tickText(1500, 500), "1500");
}

TEST(TickText, TellsNeighboursFarFromZeroApart) {
    EXPECT_EQ(tickText(45.67880, 0.00002), "45.67880");
    EXPECT_EQ(tickText(45.67882, 0.00002), "45.67882");
}

TEST(TickText, WritesLongNumbersWithAnExponentWhereThatIsShorter) {
    EXPECT_EQ(tickText(2.5e-9, 0.5e-9), "2.5e-09");
    EXPECT_EQ(tickText(0, 0.5e-9), "0");
    EXPECT_EQ(tickText(3e12, 1e12), "3e+12");
    EXPECT_EQ(tickText(45.678800001, 1e-9), "45.678800001");
}

RC_GTEST_PROP(TickText, NeverWritesTwoTicksAlikeNorFarFromTheirValue, ()) {
    constexpr std::array mantissas{1.0, 2.0, 2.5, 5.0};
    const double step = mantissas[*rc::gen::inRange<std::size_t>(0, 4)] * std::pow(10.0, *rc::gen::inRange(-9, 9));
    const int first = *rc::gen::inRange(-100'000, 100'000);
    std::string before;
    for (int k = first; k < first + 6; ++k) {
        const std::string text = tickText(k * step, step);
        RC_ASSERT(text != before);
        RC_ASSERT(std::abs(std::strtod(text.c_str(), nullptr) - k * step) < step * 1e-3);
        before = text;
    }
}

} // namespace
} // namespace tavex2
