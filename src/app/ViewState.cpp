#include "app/ViewState.h"

#include "app/OutsidePrograms.h"
#include "base/Decimal.h"

#include <algorithm>

namespace tavex2 {

namespace {

constexpr const char* programTitle = "Tavex2";

/// The current trial's name, with a word while it is not saved or has just been imported.
std::string captionOf(const ProgramState& state) {
    const std::string& name = state.TrialName();
    if (name.empty()) return programTitle;
    if (!state.DataPresent()) return name;
    if (state.trials.CurrentTrial->imported) return "File: " + name;
    return state.Unsaved() ? name + " (Unsaved)" : name;
}

/// What a run says by itself; empty where it has nothing to say.
std::string runText(const RunStatus& run) {
    constexpr int digits = 15;
    switch (run.phase) {
    case RunPhase::Idle:
    case RunPhase::Preparing:
        return {};
    case RunPhase::Pausing:
        return "Pausing";
    case RunPhase::Waiting:
        return "Waiting for trigger before acquiring data";
    case RunPhase::Acquiring:
        if (run.repeats < 2 || run.repeat <= 0) return "Acquiring data";
        return "Repeat " + generalDecimal(run.repeat, digits) + " of " + std::to_string(run.repeats);
    case RunPhase::RealTime:
        return "Acquiring data continuously.  Press Stop button to terminate collection.";
    }
    return {};
}

/// What a run says always stands; beside it stands what is being done with a file, or what the user was told last.
std::string statusOf(const ProgramState& state) {
    const std::string run = runText(state.run);
    const std::string& beside = state.fileWork.empty() ? state.notice : state.fileWork;
    if (run.empty()) return beside.empty() ? "Ready" : beside;
    return beside.empty() ? run : run + "  |  " + beside;
}

std::optional<ProgressLook> progressOf(const RunStatus& run) {
    if (run.phase == RunPhase::Waiting) return ProgressLook{};
    if (run.phase != RunPhase::Acquiring || run.scansOfTrial < 1 || run.rateHz <= 0) return std::nullopt;
    return ProgressLook{.known = true,
                        .share = static_cast<double>(run.scans) / static_cast<double>(run.scansOfTrial),
                        .seconds = static_cast<double>(run.scans) / run.rateHz,
                        .ofSeconds = static_cast<double>(run.scansOfTrial - 1) / run.rateHz};
}

std::string hintOf(const RunStatus& run) {
    switch (run.phase) {
    case RunPhase::Idle:
    case RunPhase::Preparing:
        return "Press Collect (Space)";
    case RunPhase::Pausing:
        return "The trial starts after the delay";
    case RunPhase::Waiting:
        return "The trial starts with the trigger";
    case RunPhase::Acquiring:
        return "The trial is being taken";
    case RunPhase::RealTime:
        return "Waiting for the board";
    }
    return {};
}

std::string averageTipOf(const TrialAverage& average) {
    if (average.empty()) return {};
    if (average.AverageCount == 1) return "One saved trial: " + average.first;
    return "The average of " + std::to_string(average.AverageCount) + " saved trials, from " + average.first + " on";
}

class Looks {
  public:
    explicit Looks(ViewState& view) : m_view(view) {}

    void enable(Command command, bool enabled) { of(command).enabled = enabled; }
    void check(Command command, bool checked) { of(command).checked = checked; }

  private:
    CommandLook& of(Command command) { return m_view.commands[static_cast<std::size_t>(command)]; }

    ViewState& m_view;
};

void enableCommands(Looks looks, const ProgramState& state, const ViewInputs& inputs) {
    using enum Command;
    for (const Command needsData :
         {SaveTrial, SaveTrialAs, ExportTab, ExportLumidor, ExportStimulus, Information, ButtonZoom, ButtonSibling})
        looks.enable(needsData, state.DataPresent());
    looks.enable(Command::AddOverlay, state.DataPresent() && !state.trials.CurrentTrial->AddedToOverlays);
    for (const Command needsOverlay : {ViewOverlay, ClearOverlay, ExportOverlay})
        looks.enable(needsOverlay, state.overlays.OverlayCount > 0);
    looks.enable(Stop, state.run.stopEnabled);
    looks.enable(Undo, !state.cleared.empty());
    looks.enable(ShowDigitally, !state.DataFile.empty());
    looks.enable(StartSibling, inputs.siblingFound);
    looks.enable(MousePans, inputs.zoom.MouseZooms);
    looks.enable(ButtonPan, inputs.zoom.panButtonEnabled);
}

void checkCommands(Looks looks, const ProgramState& state, const ViewInputs& inputs) {
    using enum Command;
    const SetupOptions& setup = state.settings.setup;
    const StateFlags& flags = state.flags;
    looks.check(Autosave, setup.Autosave);
    looks.check(AutosaveWithoutAsking, state.autosaveWithoutAsking);
    looks.check(Command::DebugMode, flags.DebugMode);
    looks.check(ResetBefore, flags.resetMark.value_or(setup.PauseToReset));
    looks.check(StartMaximized, flags.maximizedMark.value_or(setup.StartMaximized));
    looks.check(SaveOffsets, setup.SaveOffsets);
    const int spreadsheet = spreadsheetItem(state.paths.SpreadsheetProgram);
    looks.check(SpreadsheetExcel, spreadsheet == 0);
    looks.check(SpreadsheetQuattro, spreadsheet == 1);
    looks.check(SpreadsheetOther, spreadsheet == 2);
    looks.check(ShowLastTrial, flags.ShowLastTrial);
    looks.check(ShowAverage, flags.ShowAveragedTrials);
    looks.check(ShowLegend, flags.LegendShown && !flags.legendClosed);
    looks.check(MouseZooms, inputs.zoom.MouseZooms);
    looks.check(MousePans, inputs.zoom.MousePans);
    looks.check(ZoomArea, inputs.zoom.zoomsArea);
    looks.check(ButtonZoom, inputs.zoom.tool() == GraphTool::ZoomArea);
    looks.check(ButtonPan, inputs.zoom.tool() == GraphTool::Pan);
}

} // namespace

ViewState viewState(const ProgramState& state, const ViewInputs& inputs) {
    ViewState view;
    view.caption = captionOf(state);
    view.status = statusOf(state);
    view.device = inputs.device;
    enableCommands(Looks(view), state, inputs);
    checkCommands(Looks(view), state, inputs);
    view.exportMenu = state.DataPresent();
    view.exportOverlayMenu = state.overlays.OverlayCount > 0;
    // A repeat that is shown may be worked on while the next one is taken.
    view.busyPointer =
        !state.fileWork.empty() || (state.run.awaitsFirstTrial() && state.run.phase != RunPhase::Preparing);
    view.waitingShown = state.run.phase == RunPhase::Waiting && !state.run.asking;
    view.legendShown = state.flags.LegendShown && !state.flags.legendClosed;
    view.progress = progressOf(state.run);
    view.currentHint = hintOf(state.run);
    view.averageTip = averageTipOf(state.trials.average);
    return view;
}

} // namespace tavex2
