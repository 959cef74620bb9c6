#include "display/TraceReadout.h"

#include "display/Trials.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavex2 {
namespace {

using test::makeTrial;

/// Channel c is at c volts, except that channel 2 is not a number at sample 3.
TrialPyramid steps() {
    return TrialPyramid(makeTrial(3, 11, [](int channel, std::int64_t i) {
        return channel == 2 && i == 3 ? std::nan("") : static_cast<double>(channel);
    }));
}

TEST(TraceReadout, FindsTheNearestSampleOfTheNearestChannel) {
    const auto found = nearestSample(steps(), 0.1, 1.0, 0.52, 1.4);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->position, 1);
    EXPECT_DOUBLE_EQ(found->seconds, 0.5);
    EXPECT_EQ(found->volts, 1.0);
}

TEST(TraceReadout, LooksAtValuesAsTheyAreDrawn) {
    const auto found = nearestSample(steps(), 0.1, 0.5, 0.5, 1.1);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->position, 2);
    EXPECT_EQ(found->volts, 1.0);
}

TEST(TraceReadout, GivesNothingBesideTheData) {
    EXPECT_FALSE(nearestSample(steps(), 0.1, 1.0, -0.06, 0));
    EXPECT_FALSE(nearestSample(steps(), 0.1, 1.0, 1.06, 0));
    EXPECT_TRUE(nearestSample(steps(), 0.1, 1.0, 1.04, 0));
    EXPECT_FALSE(nearestSample(steps(), 0.1, 1.0, std::nan(""), 0));
    EXPECT_FALSE(nearestSample(TrialPyramid(nullptr), 0.1, 1.0, 0, 0));
}

TEST(TraceReadout, PassesOverWhatIsNoNumber) {
    const auto found = nearestSample(steps(), 0.1, 1.0, 0.3, 2.0);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->position, 1);
}

TEST(TraceReadout, IsWrittenInTheUnitsOfTheGraphs) {
    const TraceReadout readout{.position = 1, .seconds = 0.5234, .volts = -1.23456};
    ReadoutFormat format{.sampleIntervalSeconds = 0.0001, .voltSpan = 20, .channel = 3};
    EXPECT_EQ(readoutText(readout, format), "0.5234 s, -1.235 V, channel 3");
    format.inSeconds = false;
    format.inVolts = false;
    EXPECT_EQ(readoutText(readout, format), "523.4 ms, -1235 mV, channel 3");
    format.voltSpan = 0.002;
    EXPECT_EQ(readoutText(readout, format), "523.4 ms, -1234.5600 mV, channel 3");
}

} // namespace
} // namespace tavex2
