#include "analysis/Overlays.h"

#include "analysis/TrialSetCommands.h"
#include "support/Fakes.h"
#include "support/Trials.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

SamplingSettings settingsOf(const TrialData& trial) {
    SamplingSettings settings;
    settings.Rate = 1000;
    settings.Duration = 1;
    settings.NumChannels = static_cast<std::int16_t>(trial->channels());
    settings.NumSamples = static_cast<std::int32_t>(trial->samples());
    return settings;
}

class OverlaysTest : public testing::Test {
  protected:
    Result<void> add(const TrialData& trial, const std::string& name = "T") {
        return AddOverlay(overlays, name, settingsOf(trial), trial);
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
    EXPECT_EQ(overlays.OverlayNames[15], "T15");
}

TEST_F(OverlaysTest, RefusesATrialThatWasTakenOtherwise) {
    const TrialData trial = trialOf({{1, 2}, {3, 4}});
    ASSERT_TRUE(add(trial));
    SamplingSettings other = settingsOf(trial);
    other.Channels.assign("5,7");
    other.UpperVolts = 1;
    EXPECT_TRUE(AddOverlay(overlays, "T", other, trial)) << "channel list and limits may differ";
    other.Rate = 999;
    const auto refused = AddOverlay(overlays, "T", other, trial);
    EXPECT_EQ(refused.error().text, "Can't overlay because properties are not the same.");
    EXPECT_EQ(overlays.OverlayCount, 2);
    EXPECT_EQ(overlays.OverlaySettings.Rate, 1000);
    ClearOverlays(overlays);
    EXPECT_TRUE(AddOverlay(overlays, "T", other, trial)) << "a new set has a new reference";
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

TEST(TrialSetCommandsTest, TheMarkFollowsSuccessRefusalAndClearing) {
    ProgramState state;
    FakeMessages messages;
    int updates = 0;
    TrialSetCommands commands(state, messages, [&updates] { ++updates; });
    commands.mnuOverlay_Click();
    EXPECT_EQ(state.overlays.OverlayCount, 0) << "no trial, no overlay";

    state.rename("First");
    state.trials.CurrentTrial = trialOf({{1, 2}, {3, 4}});
    state.trials.CurrentTrial->sampling = settingsOf(state.trials.CurrentTrial);
    commands.mnuOverlay_Click();
    EXPECT_TRUE(state.trials.CurrentTrial->AddedToOverlays);
    EXPECT_EQ(state.overlays.OverlayNames[0], "First");

    state.trials.CurrentTrial->sampling.Rate = 5;
    commands.mnuOverlay_Click();
    EXPECT_FALSE(state.trials.CurrentTrial->AddedToOverlays);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "Can't overlay because properties are not the same.");
    EXPECT_EQ(messages.shown[0].title, "Error");
    EXPECT_EQ(messages.shown[0].buttons, MessageButtons::Ok);

    state.changeCurrent([](Trial& trial) { trial.AddedToOverlays = true; });
    commands.mnuClear_Click();
    EXPECT_FALSE(state.trials.CurrentTrial->AddedToOverlays);
    EXPECT_EQ(state.overlays.OverlayCount, 0);
    EXPECT_EQ(updates, 3);
}

} // namespace
} // namespace tavex2::test
