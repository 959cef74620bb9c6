#include "acquisition/RunControllerFixture.h"

#include <gmock/gmock.h>

#include <utility>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::Pair;

/// Stop in every phase of a collection, and what happens while its question is open.
class StopTest : public RunControllerTest {};

TEST_F(StopTest, StopAsksAndNoLeavesEverythingRunning) {
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

TEST_F(StopTest, StopWithYesLosesTheTrialAndPutsBackTheOneBefore) {
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

TEST_F(StopTest, StoppingTheVeryFirstTrialLeavesNoData) {
    run.Collect();
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_FALSE(state.DataPresent());
    EXPECT_FALSE(state.TrialNotSaved());
    EXPECT_FALSE(hasCurrentTrial(state));
}

TEST_F(StopTest, ATrialThatIsCompleteBeforeTheStopQuestionIsAnsweredIsKept) {
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

TEST_F(StopTest, ABoardThatFailsWhileTheStopQuestionIsOpenKeepsThePartWhateverIsAnswered) {
    for (const MessageAnswer answer : {MessageAnswer::Yes, MessageAnswer::No}) {
        run.Collect();
        messages.answers = {answer, MessageAnswer::Ok};
        bool failed = false;
        messages.whileOpen = [&] {
            if (!std::exchange(failed, true))
                input.onError({.code = -10010, .context = "scan 5.", .arrived = FakeAnalogInput::block(2, 5, 4.0)});
        };
        run.Stop();
        messages.whileOpen = nullptr;
        EXPECT_EQ(run.outcome(), RunOutcome::Failed);
        EXPECT_THAT(state.TrialName(), testing::EndsWith("-partial"));
        EXPECT_THAT(messages.shown.back().text, testing::HasSubstr("is kept as " + state.TrialName()));
        EXPECT_NE(state.notice, "Stopped");
        EXPECT_FALSE(run.busy());
        state.trials = {};
        messages.shown.clear();
    }
}

TEST_F(StopTest, StoppedWhileItIsPaintedARunStartsNothing) {
    state.settings.sampling.DIOMask = 1;
    messages.answers = {MessageAnswer::Yes};
    view.whilePainting = [&] { run.Stop(); };
    run.Collect();
    EXPECT_THAT(input.log, ElementsAre("Configure"));
    EXPECT_THAT(dio.writes, ElementsAre(Pair(0, 0))) << "no pulse";
    EXPECT_EQ(run.outcome(), RunOutcome::Stopped);
    EXPECT_FALSE(run.busy());
}

TEST_F(StopTest, StoppingInTheSecondRepeatKeepsTheFirst) {
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

TEST_F(StopTest, ARepeatThatWasSavedStaysSavedWhenALaterOneIsStopped) {
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

TEST_F(StopTest, StopDuringThePauseEndsItWithoutStarting) {
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

TEST_F(StopTest, ThePauseOfAStoppedRunDoesNotStartTheNextOneEarly) {
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

TEST_F(StopTest, NoDuringThePauseLetsTheCollectionStart) {
    state.settings.setup.StartDelay = 1;
    run.Collect();
    events.pass(100);
    messages.answers = {MessageAnswer::No};
    run.Stop();
    events.pass(900);
    EXPECT_THAT(input.log, ElementsAre("Configure", "Start"));
    EXPECT_TRUE(run.busy());
}

TEST_F(StopTest, ThePauseEndsOnTimeWhileTheStopQuestionIsOpen) {
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

} // namespace
} // namespace tavex2::test
