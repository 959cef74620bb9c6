#include "acquisition/RunControllerFixture.h"
#include "acquisition/StartCondition.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST_F(RunControllerTest, CollectsATrialStepByStep) {
    run.Collect();

    EXPECT_EQ(state.settings.setup.TrialNumber, 1);
    EXPECT_THAT(input.log, ElementsAre("Configure", "Start"));
    EXPECT_THAT(view.log, ElementsAre("refresh"));
    EXPECT_EQ(state.run.phase, RunPhase::Acquiring);
    EXPECT_TRUE(state.run.stopEnabled);
    EXPECT_TRUE(state.run.awaitsFirstTrial());
    EXPECT_EQ(input.config.totalScans, 11);
    EXPECT_EQ(input.config.chunkScans, 11);
    EXPECT_FALSE(input.config.chunked);
    EXPECT_FALSE(state.DataPresent()) << "nothing has arrived";
    EXPECT_EQ(state.TrialName(), "") << "the coming trial's name is the run's own";
    EXPECT_TRUE(run.busy());

    view.log.clear();
    input.deliver(1.0);

    EXPECT_THAT(view.log, ElementsAre("RedrawTrials", "refresh"));
    EXPECT_EQ(state.run.phase, RunPhase::Idle);
    EXPECT_FALSE(state.run.stopEnabled);
    EXPECT_EQ(state.TrialName(), "Trial0001");
    EXPECT_EQ(state.trials.CurrentTrial->number, 1);
    EXPECT_TRUE(state.Unsaved());
    EXPECT_TRUE(state.TrialNotSaved());
    EXPECT_TRUE(state.DataPresent());
    EXPECT_FALSE(run.busy());
    EXPECT_EQ(run.outcome(), RunOutcome::Completed);
    ASSERT_TRUE(state.trials.CurrentTrial);
    EXPECT_EQ(state.trials.CurrentTrial->samples->at(1, 10), 111.0);
    EXPECT_EQ(state.settings.sampling.NumChannels, 2);
    EXPECT_EQ(state.settings.sampling.NumSamples, 11);
}

TEST_F(RunControllerTest, TwoSecondsAtOneKilohertzAre2001SamplesAndThreeRepeats6003Scans) {
    state.settings.sampling.Rate = 1000;
    state.settings.sampling.Duration = 2.0F;
    run.Collect();
    EXPECT_EQ(input.config.totalScans, 2001);
    EXPECT_FALSE(input.config.chunked);
    input.deliver(0);

    state.settings.sampling.Repeat = 3;
    run.Collect();
    EXPECT_EQ(input.config.totalScans, 6003);
    EXPECT_EQ(input.config.chunkScans, 2001);
    EXPECT_TRUE(input.config.chunked);
}

TEST_F(RunControllerTest, KeepsTheTrialBeforeAsTheLastTrial) {
    collectAndDeliver(1.0);
    const TrialPtr first = state.trials.CurrentTrial;
    state.settings.sampling.Rate = 200;
    run.Collect();
    EXPECT_EQ(state.trials.LastTrial, first);
    EXPECT_EQ(state.trials.LastTrial->sampling.Rate, 100);
    input.deliver(5.0);
    EXPECT_EQ(state.trials.LastTrial, first);
    EXPECT_EQ(state.trials.CurrentTrial->sampling.Rate, 200);
    EXPECT_NE(state.trials.CurrentTrial, first);
}

TEST_F(RunControllerTest, WritesTheChannelListBackTrimmed) {
    state.settings.sampling.Channels.assign("  0:1  ");
    run.Collect();
    EXPECT_EQ(input.config.channelList, "0:1");
    EXPECT_EQ(state.settings.sampling.Channels, FixedText<50>("0:1"));
}

TEST_F(RunControllerTest, TheDialogsNumber7MakesTheNextTrial0008AndNumbersAbove9999PrintInFull) {
    state.settings.setup.TrialNumber = 7;
    collectAndDeliver(0);
    EXPECT_EQ(state.TrialName(), "Trial0008");
    state.settings.setup.TrialNumber = 12344;
    state.settings.setup.FilePrefix = "S1 ";
    collectAndDeliver(0);
    EXPECT_EQ(state.TrialName(), "S1 12345");
}

TEST_F(RunControllerTest, RefusesATrialNumberBeyond16BitsAndChangesNothing) {
    state.settings.setup.TrialNumber = std::numeric_limits<std::int16_t>::max();
    run.Collect();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(input.log, IsEmpty());
    EXPECT_EQ(state.settings.setup.TrialNumber, 32767);
    EXPECT_FALSE(state.DataPresent());
    EXPECT_FALSE(run.busy());
}

TEST_F(RunControllerTest, RefusesSettingsThatNoTrialCanHaveAndChangesNothing) {
    state.settings.sampling.Duration = -1;
    run.Collect();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text,
                testing::HasSubstr("Duration: must be a number from 0.01 to 3600 s, not \"-1\"."));
    EXPECT_EQ(state.settings.setup.TrialNumber, 0);
    EXPECT_THAT(input.log, IsEmpty());
    EXPECT_FALSE(run.busy());

    state.settings.sampling.Duration = 1;
    state.settings.sampling.UpperVolts = 11;
    run.Collect();
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_THAT(messages.shown[1].text, testing::HasSubstr("Upper: must be")) << "by the name of its box";
}

TEST_F(RunControllerTest, WithoutADeviceItSaysSoAndChangesNothingElse) {
    input.description = "Device: none";
    run.Collect();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "No A/D Device");
    EXPECT_EQ(messages.shown[0].text, "No A/D device was selected or none was found.\n"
                                      "Try changing the A/D Device number in the Properties menu.\n\n"
                                      "Data collection cancelled.");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);
    EXPECT_EQ(state.settings.setup.TrialNumber, 0);
    EXPECT_THAT(input.log, IsEmpty());
    EXPECT_FALSE(state.DataPresent());
}

TEST_F(RunControllerTest, ARefusedConfigurationGivesOneMessageAndRestoresEverythingButTheTrialNumber) {
    collectAndDeliver(1.0);
    state.changeCurrent([](Trial& trial) { trial.Unsaved = false; });
    state.changeCurrent([](Trial& trial) { trial.TrialNotSaved = false; });
    state.changeCurrent([](Trial& trial) { trial.AddedToAverage = true; });
    input.configureCode = -10003;
    run.Collect();

    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "DAQ Error: -10003\rDescription of -10003.");
    EXPECT_EQ(messages.shown[0].buttons, MessageButtons::Ok);
    EXPECT_EQ(state.run.phase, RunPhase::Idle);
    EXPECT_FALSE(state.run.stopEnabled);
    EXPECT_FALSE(state.Unsaved());
    EXPECT_FALSE(state.TrialNotSaved());
    EXPECT_TRUE(state.trials.CurrentTrial->AddedToAverage);
    EXPECT_EQ(state.TrialName(), "Trial0001");
    EXPECT_EQ(state.settings.setup.TrialNumber, 2);
    EXPECT_EQ(run.outcome(), RunOutcome::Refused);
    EXPECT_FALSE(run.busy());
}

TEST_F(RunControllerTest, ARefusedStartEndsTheSameWay) {
    input.startCode = -10008;
    run.Collect();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_FALSE(state.run.stopEnabled);
    EXPECT_FALSE(state.DataPresent());
    EXPECT_FALSE(run.busy());
}

TEST_F(RunControllerTest, WhatBlocksTheWindowIsPaintedFirst) {
    state.settings.sampling.DIOMask = 1;
    view.whilePainting = [&] {
        EXPECT_THAT(input.log, ElementsAre("Configure")) << "before the board is started";
        EXPECT_EQ(state.run.phase, RunPhase::Acquiring);
    };
    run.Collect();
    EXPECT_THAT(view.log, ElementsAre("refresh", "paint"));
}

TEST_F(RunControllerTest, ShowDaqErrorShowsNothingForZero) {
    run.ShowDaqError(0);
    EXPECT_THAT(messages.shown, IsEmpty());
}

TEST_F(RunControllerTest, CancellingTheResetPromptKeepsWhatWasDoneAndTheNextNameSkipsANumber) {
    collectAndDeliver(1.0);
    state.changeCurrent([](Trial& trial) { trial.AddedToAverage = true; });
    const TrialPtr first = state.trials.CurrentTrial;
    state.settings.setup.PauseToReset = true;
    messages.answers = {MessageAnswer::Cancel};
    run.Collect();

    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "Reset channels and press OK when ready to start collection.");
    EXPECT_EQ(messages.shown[0].title, "Reset Channels Now");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Question);
    EXPECT_EQ(messages.shown[0].buttons, MessageButtons::OkCancel);
    EXPECT_EQ(state.settings.setup.TrialNumber, 2);
    EXPECT_TRUE(state.run.stopEnabled);
    EXPECT_EQ(state.trials.LastTrial, first);
    EXPECT_THAT(input.log, ElementsAre("Configure", "Start", "Configure"));
    EXPECT_TRUE(state.trials.CurrentTrial->AddedToAverage) << "saving the old trial again would count it twice";
    EXPECT_FALSE(run.busy());

    collectAndDeliver(2.0);
    EXPECT_EQ(state.TrialName(), "Trial0003");
}

TEST_F(RunControllerTest, TheStartDelayIsAPhaseOfItsOwnAndLastsToTheMillisecond) {
    state.settings.setup.StartDelay = 2;
    run.Collect();
    EXPECT_EQ(state.run.phase, RunPhase::Pausing);
    EXPECT_THAT(input.log, ElementsAre("Configure"));
    run.Collect(); // a second collection cannot start while this one is pausing
    EXPECT_EQ(state.settings.setup.TrialNumber, 1);
    events.pass(1999);
    EXPECT_EQ(state.run.phase, RunPhase::Pausing);
    events.pass(1);
    EXPECT_EQ(state.run.phase, RunPhase::Acquiring);
    EXPECT_THAT(input.log, ElementsAre("Configure", "Start"));
    EXPECT_LE(clock.milliseconds(), 2002);
}

TEST_F(RunControllerTest, AControllerThatIsGoneStartsNothing) {
    state.settings.setup.StartDelay = 1;
    {
        RunController gone(state, services());
        gone.Collect();
    }
    events.pass(2000);
    EXPECT_THAT(input.log, ElementsAre("Configure"));
}

// The plan ------------------------------------------------------------------------------------------------------------

TEST_F(RunControllerTest, WhatIsChangedWhileARunIsPausingAppliesToTheNextOne) {
    state.settings.setup.StartDelay = 1;
    run.Collect();
    state.flags.DebugMode = true;
    state.settings.sampling.Rate = 500;
    state.settings.sampling.Duration = 1;
    state.settings.sampling.Repeat = 4;
    state.settings.setup.FilePrefix = "Other";
    state.settings.setup.TrialNumber = 77;
    events.pass(1000);
    EXPECT_THAT(input.log, ElementsAre("Configure", "Start")) << "the board was to be driven";
    input.deliver(1.0);
    const Trial& trial = *state.trials.CurrentTrial;
    EXPECT_EQ(trial.name, "Trial0001");
    EXPECT_EQ(trial.number, 1);
    EXPECT_EQ(trial.sampling.Rate, 100);
    EXPECT_EQ(trial.sampling.Duration, 0.1F);
    EXPECT_EQ(trial.sampling.NumSamples, 11);
    EXPECT_FALSE(run.busy());
}

TEST_F(RunControllerTest, DebugModeSwitchedOffInThePauseStillDrivesNothing) {
    state.flags.DebugMode = true;
    state.settings.setup.StartDelay = 1;
    run.Collect();
    state.flags.DebugMode = false;
    events.pass(1000);
    EXPECT_THAT(input.log, IsEmpty());
    EXPECT_EQ(run.outcome(), RunOutcome::NoBoard);
}

TEST_F(RunControllerTest, DebugModeSwitchedOnMeanwhileDoesNotKeepStopFromStoppingTheBoard) {
    run.Collect();
    state.flags.DebugMode = true;
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_FALSE(input.running());
    state.flags.DebugMode = false;
    collectAndDeliver(2.0);
    EXPECT_EQ(state.TrialName(), "Trial0002");
}

TEST_F(RunControllerTest, StopStopsNothingThatADebugRunDidNotStart) {
    state.flags.DebugMode = true;
    state.settings.setup.StartDelay = 1;
    run.Collect();
    state.flags.DebugMode = false;
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_THAT(input.log, IsEmpty());
    EXPECT_EQ(state.notice, "Stopped");
}

// Trials --------------------------------------------------------------------------------------------------------------

TEST_F(RunControllerTest, TheTrialThatIsShownStaysWholeWhileTheNextOneIsAwaited) {
    collectAndDeliver(1.0);
    const TrialPtr first = state.trials.CurrentTrial;
    run.Collect();
    EXPECT_EQ(state.trials.CurrentTrial, first);
    EXPECT_EQ(state.TrialName(), "Trial0001");
    state.settings.setup.PauseToReset = false;
    messages.answers = {MessageAnswer::Yes};
    run.Stop();
    EXPECT_EQ(state.trials.CurrentTrial, first);
}

TEST_F(RunControllerTest, AnUnsavedTrialThatIsReplacedIsTold) {
    collectAndDeliver(1.0);
    EXPECT_EQ(state.notice, "");
    collectAndDeliver(2.0);
    EXPECT_EQ(state.notice, "Trial0001 was not saved; it is the last trial.");
    state.changeCurrent([](Trial& trial) { trial.TrialNotSaved = false; });
    state.settings.sampling.Repeat = 2;
    run.Collect();
    input.deliver(3.0, 0, false);
    EXPECT_EQ(state.notice, "");
    input.deliver(4.0, 1, true);
    EXPECT_EQ(state.notice, "Trial0003 was not saved; the next repeat has taken its place.");
}

TEST_F(RunControllerTest, WaitsForTheTriggerUntilItHasFired) {
    state.flags.TriggerEnabled = true;
    state.settings.trigger.TriggerChannel = "1";
    input.config.start = startConditionFor(state.settings, true);
    run.Collect();
    EXPECT_EQ(state.run.phase, RunPhase::Waiting);
    messages.answers = {MessageAnswer::No};
    messages.whileOpen = [&] { EXPECT_TRUE(state.run.asking); };
    run.Stop();
    EXPECT_FALSE(state.run.asking);
    EXPECT_EQ(state.run.phase, RunPhase::Waiting) << "the collection still waits";
    input.onProgress({.count = 11, .totalScans = 11, .waitingForTrigger = true});
    EXPECT_EQ(state.run.phase, RunPhase::Waiting);
    input.onProgress({.count = 11, .totalScans = 11});
    EXPECT_EQ(state.run.phase, RunPhase::Acquiring) << "the trigger has fired";
    input.deliver(0);
    EXPECT_EQ(state.run.phase, RunPhase::Idle);
}

TEST_F(RunControllerTest, TriggerModeAloneStartsNoTriggering) {
    state.settings.setup.TriggerMode = 1;
    run.Collect();
    EXPECT_EQ(input.config.start.type, StartCondition::Type::None);
    EXPECT_EQ(state.run.phase, RunPhase::Acquiring);
}

TEST_F(RunControllerTest, RepeatsGetNamesOfTheirOwnAndStopStaysEnabledUntilTheLast) {
    state.settings.sampling.Repeat = 3;
    run.Collect();
    std::vector<std::string> names;
    for (int i = 0; i < 3; ++i) {
        input.onProgress({.count = (i + 1) * input.config.totalScans, .totalScans = input.config.totalScans});
        EXPECT_EQ(state.run.repeat, i + 1);
        EXPECT_EQ(state.run.repeats, 3);
        input.deliver(i, i, i == 2);
        names.push_back(state.TrialName());
        EXPECT_EQ(state.run.stopEnabled, i < 2);
        EXPECT_FALSE(state.trials.CurrentTrial->AddedToAverage);
        EXPECT_TRUE(state.Unsaved());
        state.changeCurrent([](Trial& trial) { // as saving does
            trial.AddedToAverage = trial.AddedToOverlays = true;
            trial.Unsaved = false;
        });
    }
    EXPECT_THAT(names, ElementsAre("Trial0001", "Trial0001-r2", "Trial0001-r3"));
    EXPECT_EQ(state.settings.setup.TrialNumber, 1);
    EXPECT_FALSE(run.busy());
}

TEST_F(RunControllerTest, RepeatsThatArriveWhileOneIsBeingSavedWaitTheirTurn) {
    state.settings.sampling.Repeat = 3;
    state.settings.setup.Autosave = true;
    std::vector<double> savedFirstSamples;
    sink.whileSaving = [&] {
        if (savedFirstSamples.empty()) { // the dialog is open and the board goes on
            input.deliver(2.0, 1, false);
            input.deliver(3.0, 2, true);
        }
        savedFirstSamples.push_back(state.trials.CurrentTrial->samples->at(0, 0));
    };
    run.Collect();
    input.deliver(1.0, 0, false);
    EXPECT_THAT(savedFirstSamples, ElementsAre(1.0, 2.0, 3.0));
    EXPECT_EQ(state.TrialName(), "Trial0001-r3");
    EXPECT_FALSE(run.busy());
}

TEST_F(RunControllerTest, ARepeatThatArrivesWhileTheUserSavesWaitsUntilTheSaveIsDone) {
    state.settings.sampling.Repeat = 2;
    run.Collect();
    input.deliver(1.0, 0, false);
    {
        const RunController::Hold whileSaving(run);
        input.deliver(2.0, 1, true);
        EXPECT_EQ(state.TrialName(), "Trial0001");
        EXPECT_EQ(state.trials.CurrentTrial->samples->at(0, 0), 1.0);
    }
    EXPECT_EQ(state.TrialName(), "Trial0001-r2");
    EXPECT_EQ(state.trials.CurrentTrial->samples->at(0, 0), 2.0);
    EXPECT_FALSE(run.busy());
}

TEST_F(RunControllerTest, ASingleTrialShowsItsProgressWithoutARepeatCounter) {
    run.Collect();
    input.onProgress({.count = 11, .totalScans = 11, .scansInBlock = 5, .blockScans = 11});
    EXPECT_EQ(state.run.repeats, 1);
    EXPECT_EQ(state.run.scans, 5);
    EXPECT_EQ(state.run.scansOfTrial, 11);
    EXPECT_EQ(state.run.rateHz, 100);
    input.deliver(0);
    EXPECT_EQ(state.run.scansOfTrial, 0);
}

TEST_F(RunControllerTest, AutosaveFollowsTheCommentsAndPassesTheSaveType) {
    state.settings.setup.Comments = true;
    state.settings.setup.Autosave = true;
    state.settings.setup.SaveType = 1;
    view.whileCommenting = [&] { EXPECT_THAT(sink.saveTypes, IsEmpty()); };
    collectAndDeliver(0);
    EXPECT_THAT(sink.saveTypes, ElementsAre(1));
    EXPECT_EQ(view.log.back(), "comments");
}

TEST_F(RunControllerTest, AnErrorKeepsWhatHadArrivedAndReportsCodeContextAndDescription) {
    run.Collect();
    input.onError({.code = -10010, .context = "scan 5 of 11.", .arrived = FakeAnalogInput::block(2, 5, 4.0)});
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "Error: -10010\r\nContext: scan 5 of 11. The part of the trial that had arrived "
                                      "(5 samples per channel) is kept as Trial0001-partial.\r\n"
                                      "Description of -10010.");
    EXPECT_EQ(state.TrialName(), "Trial0001-partial");
    EXPECT_EQ(state.trials.CurrentTrial->samples->samples(), 5);
    EXPECT_EQ(state.settings.sampling.NumSamples, 5);
    EXPECT_TRUE(state.TrialNotSaved());
    EXPECT_FALSE(state.run.stopEnabled);
    EXPECT_EQ(run.outcome(), RunOutcome::Failed);
}

TEST_F(RunControllerTest, AnErrorBeforeAnyScanPutsBackTheTrialBefore) {
    collectAndDeliver(1.0);
    state.changeCurrent([](Trial& trial) { trial.Unsaved = false; });
    run.Collect();
    input.onError({.code = -10010, .context = "before the first scan.", .arrived = nullptr});
    EXPECT_EQ(state.TrialName(), "Trial0001");
    EXPECT_FALSE(state.Unsaved());
    EXPECT_EQ(state.trials.CurrentTrial->samples->at(0, 0), 1.0);
}

TEST_F(RunControllerTest, DebugModeDrivesNothingAndEndsAtOnce) {
    state.flags.DebugMode = true;
    state.settings.sampling.DIOMask = 7;
    input.description = "Device: none";
    run.Collect();
    EXPECT_THAT(input.log, IsEmpty());
    EXPECT_THAT(messages.shown, IsEmpty());
    EXPECT_THAT(dio.writes, ElementsAre(Pair(0, 0))) << "only the reset before the collection";
    EXPECT_TRUE(state.DataPresent());
    EXPECT_TRUE(state.Unsaved());
    EXPECT_EQ(state.TrialName(), "Trial0001");
    EXPECT_FALSE(hasCurrentTrial(state));
    EXPECT_FALSE(state.run.stopEnabled);
    EXPECT_FALSE(run.busy());
    EXPECT_EQ(run.outcome(), RunOutcome::NoBoard);
}

TEST_F(RunControllerTest, ADebugCollectionLeavesTheTrialBeforeAsItIs) {
    collectAndDeliver(1.0);
    state.changeCurrent([](Trial& trial) { trial.AddedToAverage = true; });
    const TrialPtr before = state.trials.CurrentTrial;
    state.flags.DebugMode = true;
    run.Collect();
    EXPECT_EQ(state.trials.CurrentTrial, before) << "whole, with its own name";
    EXPECT_EQ(state.settings.setup.TrialNumber, 2);
}

TEST(RunPhaseTest, OnlyTheLegalMovesAreAllowed) {
    using enum RunPhase;
    const std::vector all{Idle, Preparing, Pausing, Waiting, Acquiring, RealTime};
    const std::vector<std::pair<RunPhase, RunPhase>> legal{
        {Idle, Preparing},      {Idle, RealTime},   {Preparing, Pausing}, {Preparing, Waiting},
        {Preparing, Acquiring}, {Pausing, Waiting}, {Pausing, Acquiring}, {Waiting, Acquiring}};
    for (const RunPhase from : all)
        for (const RunPhase to : all)
            EXPECT_EQ(canEnter(from, to), to == Idle || testing::Matches(testing::Contains(std::pair(from, to)))(legal))
                << static_cast<int>(from) << " to " << static_cast<int>(to);
}

} // namespace
} // namespace tavex2::test
