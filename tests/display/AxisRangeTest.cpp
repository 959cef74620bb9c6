#include "display/AxisRange.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace tavex2 {
namespace {

TEST(VoltageRange, LeavesAFewPercentOnEitherSideAndIsRound) {
    EXPECT_EQ(voltageRange({-10, 10}), (AxisRange{-11, 11}));
    EXPECT_EQ(voltageRange({0, 1}), (AxisRange{-0.06, 1.06}));
    EXPECT_EQ(voltageRange({-1.574, 3.623}), (AxisRange{-1.84, 3.9}));
}

RC_GTEST_PROP(VoltageRange, HoldsTheDataWithAMarginThatIsNeitherMissingNorWasteful, ()) {
    const double scale = std::pow(10.0, *rc::gen::inRange(-6, 6));
    const double low = *rc::gen::inRange(-100000, 100000) / 1000.0 * scale;
    const double span = *rc::gen::inRange(1, 200000) / 1000.0 * scale;
    const auto range = voltageRange({low, low + span});
    RC_ASSERT(range.has_value());
    RC_ASSERT(low - range->minimum >= 0.049 * span);
    RC_ASSERT(range->maximum - (low + span) >= 0.049 * span);
    RC_ASSERT(range->maximum - range->minimum <= 1.6 * span);
}

TEST(VoltageRange, PutsABandAroundConstantData) {
    for (const double constant : {2.5, -2.5, 0.003, -9.9}) {
        const auto range = voltageRange({constant, constant});
        ASSERT_TRUE(range.has_value());
        EXPECT_LT(range->minimum, constant);
        EXPECT_GT(range->maximum, constant);
    }
    const auto zero = voltageRange({0, 0});
    ASSERT_TRUE(zero.has_value());
    EXPECT_LE(zero->minimum, -1);
    EXPECT_GE(zero->maximum, 1);
}

TEST(VoltageRange, TreatsDataThatDifferByRoundingOnlyAsConstant) {
    const auto range = voltageRange({5.0, std::nextafter(5.0, 6.0)});
    ASSERT_TRUE(range.has_value());
    EXPECT_GT(range->maximum - range->minimum, 0.5);
}

TEST(VoltageRange, IsNothingForNoDataAndForDataWithoutBounds) {
    EXPECT_FALSE(voltageRange(Extent{}).has_value());
    EXPECT_FALSE(voltageRange({0, INFINITY}).has_value());
    EXPECT_FALSE(voltageRange({INFINITY, INFINITY}).has_value());
    EXPECT_FALSE(voltageRange({-1.7e308, 1.7e308}).has_value());
}

TEST(TimeRange, GoesFromZeroToTheLastSample) {
    EXPECT_EQ(timeRange(5001, 0.001), (AxisRange{0, 5}));
    EXPECT_EQ(timeRange(2, 0.25), (AxisRange{0, 0.25}));
}

TEST(TimeRange, OfASingleSampleIsOneInterval) {
    EXPECT_EQ(timeRange(1, 0.25), (AxisRange{0, 0.25}));
}

TEST(SampleInterval, IsOneOverTheRateAndOneSecondWithoutARate) {
    SamplingSettings sampling;
    sampling.Rate = 1000;
    EXPECT_EQ(sampleIntervalSeconds(sampling), 0.001);
    sampling.Rate = 0;
    EXPECT_EQ(sampleIntervalSeconds(sampling), 1.0);
}

TEST(FullTimeExtent, IsRepeatTimesDurationInSinglePrecision) {
    SamplingSettings sampling;
    sampling.Duration = 0.1F;
    sampling.Repeat = 3;
    EXPECT_EQ(fullTimeExtentSeconds(sampling), 3.0F * 0.1F);
    EXPECT_NE(static_cast<double>(fullTimeExtentSeconds(sampling)), 0.3);
}

TEST(SteadyVoltageRange, StaysWhileItHoldsTheDataAndTheyFillHalfOfIt) {
    const AxisRange shown{-2, 2};
    EXPECT_EQ(steadyVoltageRange(shown, {.lowest = -1.5, .highest = 1.5}), shown);
    EXPECT_EQ(steadyVoltageRange(shown, {.lowest = -2.5, .highest = 1}), *voltageRange({.lowest = -2.5, .highest = 1}));
    EXPECT_EQ(steadyVoltageRange(shown, {.lowest = 0, .highest = 0.5}), *voltageRange({.lowest = 0, .highest = 0.5}));
    EXPECT_EQ(steadyVoltageRange(shown, {}), shown);
}

} // namespace
} // namespace tavex2
