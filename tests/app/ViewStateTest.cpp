#include "app/ViewState.h"

#include "support/Trials.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace tavex2::test {
namespace {

constexpr std::array<RunPhase, runPhases> allPhases{RunPhase::Idle,    RunPhase::Preparing, RunPhase::Pausing,
                                                    RunPhase::Waiting, RunPhase::Acquiring, RunPhase::RealTime};

class ViewStateTest : public testing::Test {
  protected:
    ViewState view() const { return viewState(state, inputs); }
    bool enabled(Command command) const { return view().look(command).enabled; }
    bool checked(Command command) const { return view().look(command).checked.value(); }
    void haveTrial() { collect(state, trialOf({{0, 1}})); }
    void haveOverlay() {
        state.overlays.OverlayData[0] = state.trials.CurrentTrial;
        state.overlays.OverlayCount = 1;
    }

    ProgramState state;
    ViewInputs inputs;
};

// A run
// -----------------------------------------------------------------------------------------------------------------

TEST_F(ViewStateTest, EachPhaseOfARunHasItsWordsItsPointerAndItsWindow) {
    struct Row {
        RunPhase phase;
        std::string status;
        std::string hint;
        bool busyPointer;
        bool waitingShown;
        bool progress;
    };
    const std::vector<Row> rows{
        {RunPhase::Idle, "Ready", "Press Collect (Space)", false, false, false},
        {RunPhase::Preparing, "Ready", "Press Collect (Space)", false, false, false},
        {RunPhase::Pausing, "Pausing", "The trial starts after the delay", true, false, false},
        {RunPhase::Waiting, "Waiting for trigger before acquiring data", "The trial starts with the trigger", true,
         true, true},
        {RunPhase::Acquiring, "Acquiring data", "The trial is being taken", true, false, true},
        {RunPhase::RealTime, "Acquiring data continuously.  Press Stop button to terminate collection.",
         "Waiting for the board", false, false, false},
    };
    for (const Row& row : rows) {
        state.run.phase = row.phase;
        state.run.scansOfTrial = 11;
        state.run.rateHz = 100;
        EXPECT_EQ(view().status, row.status);
        EXPECT_EQ(view().currentHint, row.hint);
        EXPECT_EQ(view().busyPointer, row.busyPointer) << row.status;
        EXPECT_EQ(view().waitingShown, row.waitingShown) << row.status;
        EXPECT_EQ(view().progress.has_value(), row.progress) << row.status;
    }
}

TEST_F(ViewStateTest, WhatARunSaysStandsBesideWhateverElseIsTold) {
    state.notice = "Saved as /d/a.lmb";
    EXPECT_EQ(view().status, "Saved as /d/a.lmb");
    state.run = {.phase = RunPhase::Acquiring, .repeats = 3, .repeat = 2};
    EXPECT_EQ(view().status, "Repeat 2 of 3  |  Saved as /d/a.lmb");
    state.fileWork = "Saving b.lmb ...";
    EXPECT_EQ(view().status, "Repeat 2 of 3  |  Saving b.lmb ...");
    state.run = {.phase = RunPhase::Pausing};
    state.fileWork.clear();
    state.notice = "A trial is being collected. Open the file when it has arrived.";
    EXPECT_EQ(view().status, "Pausing  |  A trial is being collected. Open the file when it has arrived.");
}

TEST_F(ViewStateTest, TheRepeatIsCountedInTheGeneralFormat) {
    state.run = {.phase = RunPhase::Acquiring, .repeats = 3};
    EXPECT_EQ(view().status, "Acquiring data") << "before the board has told";
    state.run.repeat = 1;
    EXPECT_EQ(view().status, "Repeat 1 of 3");
    state.run.repeat = 1.5;
    EXPECT_EQ(view().status, "Repeat 1.5 of 3");
    state.run.repeats = 1;
    EXPECT_EQ(view().status, "Acquiring data");
}

TEST_F(ViewStateTest, TheProgressTellsSecondsOfTheTrialAndNothingWhileTheTriggerIsAwaited) {
    state.run = {.phase = RunPhase::Acquiring, .scans = 50, .scansOfTrial = 201, .rateHz = 100};
    ASSERT_TRUE(view().progress);
    EXPECT_TRUE(view().progress->known);
    EXPECT_DOUBLE_EQ(view().progress->share, 50.0 / 201);
    EXPECT_DOUBLE_EQ(view().progress->seconds, 0.5);
    EXPECT_DOUBLE_EQ(view().progress->ofSeconds, 2.0);
    state.run.phase = RunPhase::Waiting;
    EXPECT_FALSE(view().progress->known);
}

TEST_F(ViewStateTest, TheWaitingWindowGivesWayToTheStopQuestion) {
    state.run = {.phase = RunPhase::Waiting, .asking = true};
    EXPECT_FALSE(view().waitingShown);
}

TEST_F(ViewStateTest, ThePointerIsFreeOnceARepeatHasArrivedAndBusyWithAFile) {
    state.run = {.phase = RunPhase::Acquiring, .trialsTaken = 1};
    EXPECT_FALSE(view().busyPointer);
    state.fileWork = "Saving ...";
    EXPECT_TRUE(view().busyPointer);
}

TEST_F(ViewStateTest, StopIsEnabledAsTheRunSaysInEveryPhase) {
    for (const RunPhase phase : allPhases)
        for (const bool stop : {false, true}) {
            state.run = {.phase = phase, .stopEnabled = stop};
            EXPECT_EQ(enabled(Command::Stop), stop);
        }
}

// Commands
// --------------------------------------------------------------------------------------------------------------

TEST_F(ViewStateTest, DataCommandsNeedDataInEveryPhase) {
    using enum Command;
    for (const RunPhase phase : allPhases) {
        state.run.phase = phase;
        state.trials = {};
        for (const Command each :
             {SaveTrial, SaveTrialAs, ExportTab, Information, ButtonZoom, ButtonSibling, AddOverlay})
            EXPECT_FALSE(enabled(each)) << ruleOf(each).actions;
        EXPECT_FALSE(view().exportMenu);
        haveTrial();
        for (const Command each :
             {SaveTrial, SaveTrialAs, ExportTab, Information, ButtonZoom, ButtonSibling, AddOverlay})
            EXPECT_TRUE(enabled(each)) << ruleOf(each).actions;
        EXPECT_TRUE(view().exportMenu);
    }
}

TEST_F(ViewStateTest, OverlayCommandsNeedAnOverlayAndATrialIsAddedOnce) {
    using enum Command;
    haveTrial();
    for (const Command each : {ViewOverlay, ClearOverlay, ExportOverlay})
        EXPECT_FALSE(enabled(each));
    EXPECT_FALSE(view().exportOverlayMenu);
    haveOverlay();
    state.changeCurrent([](Trial& trial) { trial.AddedToOverlays = true; });
    EXPECT_FALSE(enabled(AddOverlay));
    for (const Command each : {ViewOverlay, ClearOverlay, ExportOverlay})
        EXPECT_TRUE(enabled(each));
    EXPECT_TRUE(view().exportOverlayMenu);
}

TEST_F(ViewStateTest, UndoNeedsSomethingThatWasCleared) {
    EXPECT_FALSE(enabled(Command::Undo));
    state.cleared.average = TrialAverage{};
    EXPECT_TRUE(enabled(Command::Undo));
}

TEST_F(ViewStateTest, OutsideProgramsNeedWhatTheyOpen) {
    EXPECT_FALSE(enabled(Command::ShowDigitally));
    EXPECT_FALSE(enabled(Command::StartSibling));
    state.DataFile = "/d/a.lmb";
    inputs.siblingFound = true;
    EXPECT_TRUE(enabled(Command::ShowDigitally));
    EXPECT_TRUE(enabled(Command::StartSibling));
}

TEST_F(ViewStateTest, EveryMarkFollowsItsFieldWhereverThatWasSet) {
    using enum Command;
    const std::vector<std::pair<Command, std::function<void(bool)>>> marks{
        {Autosave, [this](bool on) { state.settings.setup.Autosave = on; }},
        {AutosaveWithoutAsking, [this](bool on) { state.autosaveWithoutAsking = on; }},
        {DebugMode, [this](bool on) { state.flags.DebugMode = on; }},
        {ResetBefore, [this](bool on) { state.settings.setup.PauseToReset = on; }},
        {StartMaximized, [this](bool on) { state.settings.setup.StartMaximized = on; }},
        {SaveOffsets, [this](bool on) { state.settings.setup.SaveOffsets = on; }},
        {ShowLastTrial, [this](bool on) { state.flags.ShowLastTrial = on; }},
        {ShowAverage, [this](bool on) { state.flags.ShowAveragedTrials = on; }},
        {ShowLegend, [this](bool on) { state.flags.LegendShown = on; }},
        {MouseZooms, [this](bool on) { inputs.zoom.MouseZooms = on; }},
        {MousePans, [this](bool on) { inputs.zoom.MousePans = on; }},
        {ZoomArea, [this](bool on) { inputs.zoom.zoomsArea = on; }},
        {ButtonZoom, [this](bool on) { inputs.zoom.graphEnabled = on, inputs.zoom.trackMode = on ? 6 : 1; }},
        {ButtonPan, [this](bool on) { inputs.zoom.graphEnabled = on, inputs.zoom.trackMode = on ? 3 : 1; }},
    };
    for (const auto& [command, set] : marks)
        for (const bool on : {true, false}) {
            set(on);
            EXPECT_EQ(checked(command), on) << ruleOf(command).actions;
        }
}

TEST_F(ViewStateTest, TwoMarksShowTheSetupsBoxesBesideTheirOwnUntilTheyAreChosen) {
    state.settings.setup.SaveOffsets = true;
    state.flags.resetMark = true;
    state.flags.maximizedMark = false;
    state.settings.setup.StartMaximized = true;
    EXPECT_TRUE(checked(Command::ResetBefore));
    EXPECT_FALSE(checked(Command::StartMaximized));
    state.flags.resetMark.reset();
    state.flags.maximizedMark.reset();
    EXPECT_FALSE(checked(Command::ResetBefore));
    EXPECT_TRUE(checked(Command::StartMaximized));
}

TEST_F(ViewStateTest, ExactlyTheChosenSpreadsheetCarriesTheMark) {
    const auto marks = [this] {
        return std::vector{checked(Command::SpreadsheetExcel), checked(Command::SpreadsheetQuattro),
                           checked(Command::SpreadsheetOther)};
    };
    state.paths.SpreadsheetProgram = "Excel.exe";
    EXPECT_EQ(marks(), (std::vector{true, false, false}));
    state.paths.SpreadsheetProgram = "QPW.exe";
    EXPECT_EQ(marks(), (std::vector{false, true, false}));
    state.paths.SpreadsheetProgram = "calc";
    EXPECT_EQ(marks(), (std::vector{false, false, true}));
}

TEST_F(ViewStateTest, ALegendThatWasClosedCarriesNoMarkAndIsNotShown) {
    state.flags.LegendShown = state.flags.legendClosed = true;
    EXPECT_FALSE(checked(Command::ShowLegend));
    EXPECT_FALSE(view().legendShown);
}

// Texts
// -----------------------------------------------------------------------------------------------------------------

TEST_F(ViewStateTest, TheCaptionIsTheTrialsNameOrTheProgramsWhereThereIsNone) {
    EXPECT_EQ(view().caption, "Tavex2");
    state.rename("Protocol");
    EXPECT_EQ(view().caption, "Protocol");
    haveTrial();
    EXPECT_EQ(view().caption, "Trial0001 (Unsaved)");
    state.changeCurrent([](Trial& trial) { trial.Unsaved = false; });
    EXPECT_EQ(view().caption, "Trial0001");
    state.changeCurrent([](Trial& trial) { trial.imported = true; });
    EXPECT_EQ(view().caption, "File: Trial0001");
}

TEST_F(ViewStateTest, TheCaptionStaysTheShownTrialsInEveryPhase) {
    haveTrial();
    for (const RunPhase phase : allPhases) {
        state.run.phase = phase;
        EXPECT_EQ(view().caption, "Trial0001 (Unsaved)");
    }
}

TEST_F(ViewStateTest, TheAverageTellsHowManyTrialsItHoldsAndSinceWhen) {
    EXPECT_EQ(view().averageTip, "");
    haveTrial();
    ASSERT_TRUE(AddTrialToAverage(state.trials.average, *state.trials.CurrentTrial));
    EXPECT_EQ(view().averageTip, "One saved trial: Trial0001");
    ASSERT_TRUE(AddTrialToAverage(state.trials.average, *state.trials.CurrentTrial));
    EXPECT_EQ(view().averageTip, "The average of 2 saved trials, from Trial0001 on");
}

// The table of commands
// -------------------------------------------------------------------------------------------------

TEST(CommandsTest, EveryCommandMayRunWhereItsRuleSays) {
    for (const CommandRule& rule : commandRules())
        for (const RunPhase phase : allPhases) {
            const bool whileCollecting = rule.duringRun == DuringRun::Runs || rule.duringRun == DuringRun::Holds;
            EXPECT_EQ(mayRun(rule, phase), whileCollecting || phase == RunPhase::Idle || phase == RunPhase::RealTime)
                << rule.actions << " in phase " << static_cast<int>(phase);
            if (!whileCollecting) {
                EXPECT_FALSE(rule.refusal.empty()) << rule.actions;
            }
        }
}

TEST(CommandsTest, WhatReplacesTheTrialOrNeedsTheBoardWaitsForTheEndOfACollection) {
    using enum Command;
    std::vector<std::string_view> waiting;
    for (const CommandRule& rule : commandRules())
        if (!mayRun(rule, RunPhase::Acquiring)) waiting.push_back(rule.actions);
    EXPECT_THAT(waiting, testing::ElementsAre("mnuOpenLumidor2 tbOpen", "mnuOpen", "mnuEdit_1 tbConfigure",
                                              "mnuAcquire tbCollect", "mnuRealTime tbRealtime", "mnuOption_5"));
    for (const Command needsTheTrial :
         {SaveTrial, SaveTrialAs, ExportTab, ExportLumidor, ExportStimulus, EditComments, EditLabels})
        EXPECT_EQ(ruleOf(needsTheTrial).duringRun, DuringRun::Holds) << ruleOf(needsTheTrial).actions;
}

} // namespace
} // namespace tavex2::test
