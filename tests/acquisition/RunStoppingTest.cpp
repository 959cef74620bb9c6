#include "acquisition/RunControllerFixture.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The button "Stop" and its question.
class RunStoppingTest : public RunControllerTest {};

TEST_F(RunStoppingTest, StopAsksAndNoLeavesEverythingRunning) {
    run.Collect();
    messages.answers = {MessageAnswer::No};
    run.Stop();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "Press Yes to stop A/D collection.  Data from current trial will be lost.");
    EXPECT_EQ(messages.shown[0].title, "Stop Current Trial");
    EXPECT_EQ(messages.shown[0].buttons, MessageButtons::YesNo);
    EXPECT_TRUE(input.running());
    EXPECT_TRUE(state.run.stopEnabled);
    input.deliver(3.0);
    EXPECT_EQ(run.outcome(), RunOutcome::Completed);
}

TEST_F(RunStoppingTest, StopWithYesLosesTheTrialAndPutsBackTheOneBefore) {
    collectAndDeliver(1.0);
    state.changeCurrent([](Trial& trial) {
        trial.Unsaved = trial.TrialNotSaved = false;
        trial.AddedToAverage = true;
    });
    const TrialPtr first = state.trials.CurrentTrial;
    run.Collect();
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_FALSE(input.running());
    EXPECT_EQ(state.notice, "Stopped");
    EXPECT_FALSE(state.run.stopEnabled);
    EXPECT_EQ(state.trials.CurrentTrial, first);
    EXPECT_EQ(state.TrialName(), "Trial0001");
    EXPECT_FALSE(state.Unsaved());
    EXPECT_FALSE(state.TrialNotSaved());
    EXPECT_TRUE(state.DataPresent());
    EXPECT_TRUE(state.trials.CurrentTrial->AddedToAverage);
    EXPECT_EQ(state.settings.sampling.NumSamples, 11);
}

TEST_F(RunStoppingTest, StoppingTheVeryFirstTrialLeavesNoData) {
    run.Collect();
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_FALSE(state.DataPresent());
    EXPECT_FALSE(state.TrialNotSaved());
    EXPECT_FALSE(hasCurrentTrial(state));
}

TEST_F(RunStoppingTest, ATrialThatIsCompleteBeforeTheStopQuestionIsAnsweredIsKept) {
    for (const MessageAnswer answer : {MessageAnswer::Yes, MessageAnswer::No}) {
        run.Collect();
        messages.whileOpen = [&] { input.deliver(7.0); };
        messages.answers = {answer};
        run.Stop();
        messages.whileOpen = nullptr;
        EXPECT_EQ(run.outcome(), RunOutcome::Completed);
        EXPECT_TRUE(state.Unsaved());
        EXPECT_EQ(state.trials.CurrentTrial->samples->at(0, 0), 7.0);
        EXPECT_FALSE(state.run.stopEnabled);
        EXPECT_FALSE(run.busy());
    }
}

TEST_F(RunStoppingTest, StopDuringThePauseEndsItWithoutStarting) {
    state.settings.setup.StartDelay = 5;
    run.Collect();
    events.pass(100);
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_EQ(run.outcome(), RunOutcome::Stopped);
    EXPECT_FALSE(run.busy());
    EXPECT_EQ(state.notice, "Stopped");
    EXPECT_FALSE(state.run.stopEnabled);
    EXPECT_FALSE(state.DataPresent());
    EXPECT_EQ(state.TrialName(), "");
    events.pass(10000);
    EXPECT_THAT(input.log, ElementsAre("Configure")) << "the pause of a run that was stopped starts nothing";
}

TEST_F(RunStoppingTest, ThePauseOfAStoppedRunDoesNotStartTheNextOneEarly) {
    state.settings.setup.StartDelay = 5;
    run.Collect();
    events.pass(4000);
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    run.Collect();
    events.pass(4999);
    EXPECT_EQ(state.run.phase, RunPhase::Pausing);
    events.pass(1);
    EXPECT_EQ(state.run.phase, RunPhase::Acquiring);
}

TEST_F(RunStoppingTest, NoDuringThePauseLetsTheCollectionStart) {
    state.settings.setup.StartDelay = 1;
    run.Collect();
    events.pass(100);
    messages.answers = {MessageAnswer::No};
    run.Stop();
    events.pass(900);
    EXPECT_THAT(input.log, ElementsAre("Configure", "Start"));
    EXPECT_TRUE(run.busy());
}

TEST_F(RunStoppingTest, ThePauseEndsOnTimeWhileTheStopQuestionIsOpen) {
    state.settings.setup.StartDelay = 1;
    run.Collect();
    messages.answers = {MessageAnswer::No};
    messages.whileOpen = [&] {
        events.pass(1000);
        EXPECT_EQ(state.run.phase, RunPhase::Acquiring);
        input.deliver(5.0);
        EXPECT_FALSE(state.DataPresent()) << "the trial waits for the answer";
    };
    run.Stop();
    EXPECT_EQ(state.trials.CurrentTrial->samples->at(0, 0), 5.0);
}

TEST_F(RunStoppingTest, DebugModeSwitchedOnMeanwhileDoesNotKeepStopFromStoppingTheBoard) {
    run.Collect();
    state.flags.DebugMode = true;
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_FALSE(input.running());
    state.flags.DebugMode = false;
    collectAndDeliver(2.0);
    EXPECT_EQ(state.TrialName(), "Trial0002");
}

TEST_F(RunStoppingTest, StopStopsNothingThatADebugRunDidNotStart) {
    state.flags.DebugMode = true;
    state.settings.setup.StartDelay = 1;
    run.Collect();
    state.flags.DebugMode = false;
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_THAT(input.log, IsEmpty());
    EXPECT_EQ(state.notice, "Stopped");
}

TEST_F(RunStoppingTest, StoppingInTheSecondRepeatKeepsTheFirst) {
    state.settings.sampling.Repeat = 3;
    run.Collect();
    input.deliver(1.0, 0, false);
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_EQ(state.TrialName(), "Trial0001");
    EXPECT_EQ(state.trials.CurrentTrial->samples->at(0, 0), 1.0);
    EXPECT_TRUE(state.TrialNotSaved());
    EXPECT_EQ(run.outcome(), RunOutcome::Stopped);
}

TEST_F(RunStoppingTest, ARepeatThatWasSavedStaysSavedWhenALaterOneIsStopped) {
    state.settings.sampling.Repeat = 3;
    run.Collect();
    EXPECT_TRUE(state.run.awaitsFirstTrial());
    input.deliver(1.0, 0, false);
    EXPECT_FALSE(state.run.awaitsFirstTrial());
    state.changeCurrent([](Trial& trial) { // as saving does
        trial.name = "Mine";
        trial.Unsaved = trial.TrialNotSaved = false;
        trial.AddedToAverage = true;
    });
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_EQ(state.TrialName(), "Mine");
    EXPECT_FALSE(state.Unsaved());
    EXPECT_FALSE(state.TrialNotSaved());
    EXPECT_TRUE(state.trials.CurrentTrial->AddedToAverage);
}

} // namespace
} // namespace tavex2::test
