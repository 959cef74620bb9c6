#include "acquisition/RunControllerFixture.h"
#include "acquisition/StartCondition.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RealTimeViewTest : public RunControllerTest {
  protected:
    RealTimeViewTest() {
        input.whenConfigured = [this] { configured = input.config; };
    }
    void show(double base) { input.deliver(base, 0, false); }

    AnalogInputConfig configured; ///< as the control saw it
};

TEST_F(RealTimeViewTest, RunsWithoutTriggerAndWithoutEnd) {
    state.flags.TriggerEnabled = true;
    state.settings.trigger.TriggerChannel = "1";
    input.config.start = startConditionFor(state.settings, true);
    run.mnuRealTime_Click();
    EXPECT_THAT(view.log, ElementsAre("real time begins", "refresh"));
    EXPECT_TRUE(state.run.stopEnabled);
    EXPECT_THAT(input.log, ElementsAre("Configure", "Start"));
    EXPECT_EQ(configured.start.type, StartCondition::Type::None);
    EXPECT_EQ(configured.end, EndCondition::Continuous);
    EXPECT_EQ(configured.totalScans, 11);
    EXPECT_FALSE(configured.chunked);
    EXPECT_TRUE(state.RealTimeMode());
    EXPECT_EQ(state.settings.sampling.NumChannels, 2);
    EXPECT_EQ(state.settings.sampling.NumSamples, 11);
    EXPECT_DOUBLE_EQ(view.realTimeWindowSeconds, 0.1);
    EXPECT_FALSE(run.busy());
}

TEST_F(RealTimeViewTest, IsConfiguredAsACollectionIs) {
    state.settings.sampling.Channels.assign(" 0:1 ");
    state.settings.sampling.Repeat = 3;
    state.settings.sampling.UpperVolts = 5;
    run.mnuRealTime_Click();
    EXPECT_EQ(configured.channelList, "0:1");
    EXPECT_EQ(state.settings.sampling.Channels, FixedText<50>("0:1"));
    EXPECT_EQ(configured.totalScans, 33);
    EXPECT_TRUE(configured.chunked);
    EXPECT_EQ(configured.chunkScans, 11);
    EXPECT_EQ(configured.upperVolts, 5);
    EXPECT_EQ(configured.scanRateHz, 100);
    EXPECT_DOUBLE_EQ(view.realTimeWindowSeconds, 0.1) << "one trial's length";
}

TEST_F(RealTimeViewTest, ShowsEachBlockAndStoresNothing) {
    collectAndDeliver(1.0);
    const ProgramState before = state;
    run.mnuRealTime_Click();
    show(5.0);
    show(6.0);
    ASSERT_THAT(view.realTimeBlocks, SizeIs(2));
    EXPECT_EQ(view.realTimeBlocks.back()->at(0, 0), 6.0);
    EXPECT_EQ(view.realTimeIntervalSeconds, 0.01);
    run.Stop();
    EXPECT_EQ(state.trials.CurrentTrial, before.trials.CurrentTrial);
    EXPECT_EQ(state.trials.LastTrial, before.trials.LastTrial);
    EXPECT_EQ(state.trials.average.AverageCount, before.trials.average.AverageCount);
    EXPECT_EQ(state.settings.setup.TrialNumber, before.settings.setup.TrialNumber);
    EXPECT_EQ(state.TrialName(), before.TrialName());
    EXPECT_THAT(sink.saveTypes, IsEmpty());
}

TEST_F(RealTimeViewTest, LeavesTheFlagsOfAFreshProgramAlone) {
    run.mnuRealTime_Click();
    show(5.0);
    run.Stop();
    EXPECT_FALSE(state.Unsaved());
    EXPECT_FALSE(state.TrialNotSaved());
    EXPECT_FALSE(state.DataPresent());
    EXPECT_FALSE(state.trials.CurrentTrial);
}

TEST_F(RealTimeViewTest, StopEndsItWithoutAQuestion) {
    run.mnuRealTime_Click();
    view.log.clear();
    run.Stop();
    EXPECT_THAT(messages.shown, IsEmpty());
    EXPECT_FALSE(state.RealTimeMode());
    EXPECT_FALSE(input.running());
    EXPECT_FALSE(state.run.stopEnabled);
    EXPECT_EQ(state.notice, "Stopped");
}

TEST_F(RealTimeViewTest, TheConfirmedTriggerIsInForceAgainAfterwards) {
    state.flags.TriggerEnabled = true;
    state.settings.trigger.TriggerChannel = "1";
    state.settings.trigger.TriggerLevel = 2.5F;
    input.config.start = startConditionFor(state.settings, true);
    run.mnuRealTime_Click();
    run.Stop();
    run.Collect();
    EXPECT_EQ(configured.start.type, StartCondition::Type::AnalogLevel);
    EXPECT_EQ(configured.start.levelVolts, 2.5);
    EXPECT_EQ(configured.start.channel, "1");
    EXPECT_EQ(configured.end, EndCondition::AfterTotalScans);
    EXPECT_EQ(state.run.phase, RunPhase::Waiting);
}

TEST_F(RealTimeViewTest, CollectEndsItFirst) {
    run.mnuRealTime_Click();
    run.Collect();
    EXPECT_THAT(input.log, ElementsAre("Configure", "Start", "Stop", "Configure", "Start"));
    EXPECT_FALSE(state.RealTimeMode());
    EXPECT_TRUE(state.run.stopEnabled);
    input.deliver(4.0);
    EXPECT_EQ(state.trials.CurrentTrial->samples->at(0, 0), 4.0);
    EXPECT_THAT(view.realTimeBlocks, IsEmpty());
}

TEST_F(RealTimeViewTest, WaitsUntilACollectionIsOver) {
    run.Collect();
    input.log.clear();
    run.mnuRealTime_Click();
    EXPECT_FALSE(state.RealTimeMode());
    EXPECT_THAT(input.log, IsEmpty());
    EXPECT_TRUE(run.busy());
}

TEST_F(RealTimeViewTest, AskingForItTwiceStartsItOnce) {
    run.mnuRealTime_Click();
    run.mnuRealTime_Click();
    EXPECT_THAT(input.log, ElementsAre("Configure", "Start"));
}

TEST_F(RealTimeViewTest, ARefusalIsShownAndTheViewStaysOnUntilStop) {
    input.configureCode = -10002;
    input.startCode = -10003;
    run.mnuRealTime_Click();
    ASSERT_THAT(messages.shown, SizeIs(2));
    EXPECT_EQ(messages.shown[0].text, "DAQ Error: -10002\rDescription of -10002.");
    EXPECT_EQ(messages.shown[1].text, "DAQ Error: -10003\rDescription of -10003.");
    EXPECT_TRUE(state.RealTimeMode());
    EXPECT_TRUE(state.run.stopEnabled);
    run.Stop();
    EXPECT_FALSE(state.RealTimeMode());
}

TEST_F(RealTimeViewTest, InDebugModeNothingIsDriven) {
    state.flags.DebugMode = true;
    run.mnuRealTime_Click();
    EXPECT_TRUE(state.RealTimeMode());
    run.Stop();
    EXPECT_EQ(state.notice, "Stopped");
    EXPECT_THAT(input.log, IsEmpty());
}

TEST_F(RealTimeViewTest, DebugModeChosenMeanwhileDoesNotLeaveTheBoardRunning) {
    run.mnuRealTime_Click();
    state.flags.DebugMode = true;
    run.Stop();
    EXPECT_FALSE(input.running());
}

TEST_F(RealTimeViewTest, ABoardThatFailsEndsItAndLeavesTheLastPicture) {
    run.mnuRealTime_Click();
    view.log.clear();
    input.onError({-10010, "Continuous view.", {}, 0});
    EXPECT_FALSE(state.RealTimeMode());
    EXPECT_FALSE(state.run.stopEnabled);
    ASSERT_THAT(messages.shown, SizeIs(1));
    EXPECT_EQ(messages.shown[0].text, "Error: -10010\r\nContext: Continuous view.\r\nDescription of -10010.");
    EXPECT_THAT(view.log, testing::Not(testing::Contains("RedrawTrials")));
    EXPECT_FALSE(state.trials.CurrentTrial);
}

TEST_F(RealTimeViewTest, GoesOnBehindADialogThatHoldsTrialsBack) {
    run.mnuRealTime_Click();
    const RunController::Hold dialog(run);
    show(1.0);
    show(2.0);
    EXPECT_THAT(view.realTimeBlocks, SizeIs(2));
}

} // namespace
} // namespace tavex2::test
