#include "analysis/Overlays.h"

#include "support/Trials.h"

#include <gmock/gmock.h>

#include <utility>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class OverlaysTest : public testing::Test {
  protected:
    Result<void> add(TrialData samples, const std::string& name = "T") {
        return AddOverlay(overlays, collectedTrial({}, std::move(samples), 1000, name));
    }
    OverlaySet overlays;
};

TEST_F(OverlaysTest, HoldsSixteenAndRefusesTheNext) {
    for (int k = 0; k < 16; ++k)
        ASSERT_TRUE(add(trialOf({{1, 2}, {3, 4}}), "T" + std::to_string(k)));
    const auto refused = add(trialOf({{1, 2}, {3, 4}}));
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().text, "Maximum 16 overlays!");
    EXPECT_EQ(overlays.OverlayCount, 16);
    EXPECT_EQ(overlays.OverlayData[15]->name, "T15");
}

TEST_F(OverlaysTest, RefusesATrialThatWasTakenOtherwise) {
    const TrialPtr trial = collectedTrial({}, trialOf({{1, 2}, {3, 4}}));
    ASSERT_TRUE(AddOverlay(overlays, trial));
    const TrialPtr other = changed(trial, [](Trial& each) {
        each.sampling.Channels.assign("5,7");
        each.sampling.UpperVolts = 1;
    });
    EXPECT_TRUE(AddOverlay(overlays, other)) << "channel list and limits may differ";
    const TrialPtr slower = changed(trial, [](Trial& each) { each.sampling.Rate = 999; });
    const auto refused = AddOverlay(overlays, slower);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().text, "Can't overlay because properties are not the same.");
    EXPECT_EQ(overlays.OverlayCount, 2);
    EXPECT_EQ(overlays.OverlaySettings.Rate, 1000);
    ClearOverlays(overlays);
    EXPECT_TRUE(AddOverlay(overlays, slower)) << "a new set has a new reference";
    EXPECT_EQ(overlays.OverlaySettings.Rate, 999);
}

TEST_F(OverlaysTest, OneRowIsPlottedForEachOverlay) {
    ASSERT_TRUE(add(trialOf({{1, 2}, {-3, 4}})));
    EXPECT_EQ(BuildPlotData(overlays, 1, false, false).value()->rank(), 1);
    EXPECT_THAT(BuildPlotData(overlays, 1, true, false).value()->doubles(0), ElementsAre(-3, 4))
        << "the average of one trial is the trial";
    ASSERT_TRUE(add(trialOf({{5, 6}, {7, -8}})));
    const TrialData rows = BuildPlotData(overlays, 1, false, false).value();
    EXPECT_EQ(rows->rank(), 2);
    EXPECT_THAT(rows->doubles(0), ElementsAre(-3, 4));
    EXPECT_THAT(rows->doubles(1), ElementsAre(7, -8));
    EXPECT_THAT(BuildPlotData(overlays, 1, false, true).value()->doubles(1), ElementsAre(7, 8));
}

TEST_F(OverlaysTest, TheAverageIsTakenBeforeItIsRectified) {
    ASSERT_TRUE(add(trialOf({{1, -2}, {0, 0}})));
    ASSERT_TRUE(add(trialOf({{-3, -4}, {0, 0}})));
    EXPECT_THAT(BuildPlotData(overlays, 0, true, false).value()->doubles(0), ElementsAre(-1, -3));
    EXPECT_THAT(BuildPlotData(overlays, 0, true, true).value()->doubles(0), ElementsAre(1, 3));
}

TEST_F(OverlaysTest, TrialsOfOneChannelAndOfFilesAreTakenToo) {
    ASSERT_TRUE(add(trialOf({{1.5, -2.0}}, ElementType::Float32, 1)));
    EXPECT_THAT(BuildPlotData(overlays, 0, false, true).value()->floats(0), ElementsAre(1.5F, 2.0F));
    ASSERT_TRUE(add(trialOf({{2, 3}})));
    EXPECT_THAT(BuildPlotData(overlays, 0, false, false).value()->doubles(1), ElementsAre(2, 3));
    EXPECT_THAT(BuildPlotData(overlays, 0, true, false).value()->doubles(0), ElementsAre(1.75, 0.5));
}

TEST_F(OverlaysTest, NothingIsPlottedOfAnEmptySetOrAMissingChannel) {
    EXPECT_THAT(BuildPlotData(overlays, 0, true, false).error().text, HasSubstr("No trial has been overlaid"));
    ASSERT_TRUE(add(trialOf({{1, 2}})));
    EXPECT_FALSE(BuildPlotData(overlays, 1, false, false));
    EXPECT_FALSE(BuildPlotData(overlays, -1, false, false));
}

} // namespace
} // namespace tavex2::test
