#include "analysis/ChannelMeasures.h"

#include "support/Trials.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace tavex2::test {
namespace {

std::shared_ptr<const TrialPyramid> pyramidOf(const std::vector<double>& volts) {
    return std::make_shared<const TrialPyramid>(trialOf({volts}));
}

ChannelMeasures measuresOf(const std::vector<double>& volts, double rateHz = 1) {
    return {pyramidOf(volts), 0, rateHz};
}

/// The rule as it is written down, sample by sample, in long double.
Readings plainReading(std::span<const double> x, std::size_t i1, std::size_t i2, double rateHz) {
    const std::size_t end = x.size() - 1;
    const auto before = static_cast<long double>(static_cast<float>(i1 > 0 ? x[i1 - 1] : 2 * x[0] - x[1]));
    const auto after = static_cast<long double>(static_cast<float>(i2 < end ? x[i2 + 1] : 2 * x[end] - x[end - 1]));
    Readings readings{.Minimum = x[i1], .Maximum = x[i1], .Integral = 0};
    long double sum = 0;
    for (std::size_t j = i1; j <= i2; ++j) {
        readings.Minimum = std::min(readings.Minimum, x[j]);
        readings.Maximum = std::max(readings.Maximum, x[j]);
        sum += (j == i1 ? before : static_cast<long double>(x[j - 1])) + 4.0L * static_cast<long double>(x[j]) +
               (j == i2 ? after : static_cast<long double>(x[j + 1]));
    }
    readings.Integral = static_cast<double>(sum / (6.0L * static_cast<long double>(rateHz)));
    return readings;
}

TEST(ChannelMeasuresTest, MeasuresTheStretchBothEndsIncluded) {
    const auto read = measuresOf({5, 1, 2, 4, -3, 9}, 2).between(1, 3);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->Minimum, 1);
    EXPECT_EQ(read->Maximum, 4);
    EXPECT_EQ(read->peakToPeak(), 3);
    // (5 + 4*1 + 2) + (1 + 4*2 + 4) + (2 + 4*4 - 3), times dt / 6
    EXPECT_DOUBLE_EQ(read->Integral, (11 + 13 + 15) / 12.0);
}

TEST(ChannelMeasuresTest, CrossedCursorsGiveTheSameReadings) {
    const ChannelMeasures measures = measuresOf({5, 1, 2, 4, -3, 9}, 2);
    EXPECT_EQ(measures.between(1, 4)->Integral, measures.between(4, 1)->Integral);
    EXPECT_EQ(measures.between(4, 1)->Minimum, -3);
}

TEST(ChannelMeasuresTest, TheLineThroughTheLastTwoSamplesGoesOnBeyondTheEnds) {
    // -1 stands before 1, 3 (2*1 - 3) and 11 behind 3, 7 (2*7 - 3).
    const ChannelMeasures measures = measuresOf({1, 3, 7});
    EXPECT_DOUBLE_EQ(measures.between(0, 0)->Integral, (-1 + 4 * 1 + 3) / 6.0);
    EXPECT_DOUBLE_EQ(measures.between(2, 2)->Integral, (3 + 4 * 7 + 11) / 6.0);
    EXPECT_DOUBLE_EQ(measures.between(0, 2)->Integral, ((-1 + 4 + 3) + (1 + 12 + 7) + (3 + 28 + 11)) / 6.0);
}

TEST(ChannelMeasuresTest, AStretchOfOneSampleHasItsNeighboursOnly) {
    const auto read = measuresOf({1, 2, 6}, 10).between(1, 1);
    EXPECT_EQ(read->Minimum, 2);
    EXPECT_EQ(read->peakToPeak(), 0);
    EXPECT_DOUBLE_EQ(read->Integral, (1 + 8 + 6) / 60.0);
}

TEST(ChannelMeasuresTest, NeighboursAreTakenInSinglePrecision) {
    const double fine = 1 + 1e-12; // 1 in single precision
    EXPECT_EQ(measuresOf({fine, 0, fine}).between(1, 1)->Integral, 2.0 / 6);
    const double edge = measuresOf({fine, 0, 0}).between(0, 0)->Integral;
    EXPECT_EQ(edge, 1.0 / 6 * (6 * fine + (2 - fine) + (0 - fine))) << "the extrapolated one too";
}

TEST(ChannelMeasuresTest, WhatHasNoNeighbourOrNoRateIsNotMeasured) {
    EXPECT_FALSE(measuresOf({4}).between(0, 0));
    EXPECT_FALSE(measuresOf({4, 5}, 0).between(0, 1));
    EXPECT_FALSE(measuresOf({4, 5}).between(0, 2));
    EXPECT_FALSE(measuresOf({4, 5}).between(-1, 1));
    EXPECT_FALSE(ChannelMeasures().between(0, 0));
}

TEST(ChannelMeasuresTest, ABrokenSampleSpoilsOnlyStretchesThatHoldIt) {
    std::vector<double> volts(10'000, 1.0);
    volts[5000] = std::numeric_limits<double>::quiet_NaN();
    const ChannelMeasures measures = measuresOf(volts, 1);
    EXPECT_DOUBLE_EQ(measures.between(10, 4998)->Integral, 4989.0);
    EXPECT_DOUBLE_EQ(measures.between(5002, 9998)->Integral, 4997.0);
    EXPECT_TRUE(std::isnan(measures.between(10, 9000)->Integral));
    EXPECT_EQ(measures.between(10, 9000)->Maximum, 1.0);
}

RC_GTEST_PROP(ChannelMeasuresTest, AgreesWithThePlainReadingOfTheRule, ()) {
    const int samples = *rc::gen::inRange(2, 6000);
    std::mt19937 random(*rc::gen::arbitrary<unsigned>());
    std::uniform_real_distribution<double> volt(-10, 10);
    std::vector<double> volts(static_cast<std::size_t>(samples));
    for (double& each : volts)
        each = volt(random);
    const double rateHz = *rc::gen::inRange(1, 100'001);
    const auto i1 = static_cast<std::size_t>(*rc::gen::inRange(0, samples));
    const auto i2 = static_cast<std::size_t>(*rc::gen::inRange(static_cast<int>(i1), samples));
    const Readings expected = plainReading(volts, i1, i2, rateHz);
    const auto read = measuresOf(volts, rateHz).between(static_cast<std::int64_t>(i2), static_cast<std::int64_t>(i1));
    RC_ASSERT(read.has_value());
    RC_ASSERT(read->Minimum == expected.Minimum);
    RC_ASSERT(read->Maximum == expected.Maximum);
    // A hundred thousandth of the last digit shown would be 1e-12.
    RC_ASSERT(std::abs(read->Integral - expected.Integral) < 1e-11 / rateHz);
}

TEST(ChannelMeasuresTest, KeepsItsAccuracyFarIntoALongTrial) {
    // A drift makes the running sums large; the stretch at the end is what remains of their difference.
    std::mt19937 random(7);
    std::normal_distribution<double> noise(0, 1e-3);
    std::vector<double> volts(5'000'000);
    for (double& each : volts)
        each = 9.5 + noise(random);
    const ChannelMeasures measures = measuresOf(volts, 1000);
    for (const auto& [i1, i2] : {std::pair<std::size_t, std::size_t>{4'900'003, 4'990'001}, {0, 4'999'999}}) {
        const double expected = plainReading(volts, i1, i2, 1000).Integral;
        const auto read = measures.between(static_cast<std::int64_t>(i1), static_cast<std::int64_t>(i2));
        EXPECT_NEAR(read->Integral, expected, 1e-14 * std::abs(expected) + 1e-12);
    }
}

TEST(ChannelMeasuresTest, AHugeSampleBeforeAStretchTakesNothingFromItsIntegral) {
    std::vector<double> volts(20'000, 0.1);
    volts[0] = 1e15; // beside it a running sum has no room for tenths
    EXPECT_NEAR(measuresOf(volts).between(3000, 12'999)->Integral, 1000, 1e-6);
}

TEST(ChannelMeasuresTest, HasNoNumbersForAStretchOfNothingButNaN) {
    const double gap = std::nan("");
    const ChannelMeasures measures = measuresOf({1, 2, gap, gap, gap, 5, 6});
    const auto inside = measures.between(3, 3);
    ASSERT_TRUE(inside);
    for (const double reading : {inside->Minimum, inside->Maximum, inside->peakToPeak(), inside->Integral})
        EXPECT_TRUE(std::isnan(reading));
    const auto partly = measures.between(1, 5);
    EXPECT_EQ(partly->Minimum, 2);
    EXPECT_EQ(partly->Maximum, 5);
    EXPECT_TRUE(std::isnan(partly->Integral)) << "nobody knows what the gap adds";
}

TEST(ExtractChannelTest, TakesARowAsAnArrayOfItsOwn) {
    const TrialData trial = trialOf({{1, -2, 3}, {-4, 5, -6}});
    const TrialData row = ExtractChannel(trial, 1, false).value();
    EXPECT_EQ(row->rank(), 1);
    EXPECT_EQ(row->elementType(), trial->elementType());
    EXPECT_THAT(row->doubles(0), testing::ElementsAre(-4, 5, -6));
    EXPECT_THAT(ExtractChannel(trial, 1, true).value()->doubles(0), testing::ElementsAre(4, 5, 6));
}

TEST(ExtractChannelTest, TakesAOneChannelTrialAsItIs) {
    const TrialData trial = trialOf({{-1.5, 2.5, -0.0}}, ElementType::Float32, 1);
    EXPECT_EQ(ExtractChannel(trial, 0, false).value(), trial);
    const TrialData rectified = ExtractChannel(trial, 0, true).value();
    EXPECT_THAT(rectified->floats(0), testing::ElementsAre(1.5F, 2.5F, 0.0F));
    EXPECT_EQ(rectified->rank(), 1);
}

} // namespace
} // namespace tavex2::test
