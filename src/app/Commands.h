#pragma once

#include "acquisition/records/RunStatus.h"

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace tavex2 {

/// Everything that menus, tool bar and keys of the main window can ask for.
enum class Command {
    OpenTrial,
    ImportStimulus,
    SaveTrial,
    SaveTrialAs,
    ExportTab,
    ExportLumidor,
    ExportStimulus,
    ExportOverlay,
    OpenExplorer,
    OpenNotepad,
    Exit,
    Undo,
    EditComments,
    EditSetup,
    EditLabels,
    ShowLastTrial,
    ShowAverage,
    ShowLegend,
    Scale,
    ResetScale,
    MouseZooms,
    MousePans,
    ZoomArea,
    ButtonZoom,
    ButtonPan,
    ButtonReset,
    ShowDigitally,
    Collect,
    RealTime,
    Stop,
    Information,
    AddOverlay,
    ViewOverlay,
    ClearOverlay,
    ClearAverage,
    Autosave,
    AutosaveWithoutAsking,
    DebugMode,
    ResetBefore,
    StartMaximized,
    SaveOffsets,
    LoadSetup,
    SaveSetup,
    SpreadsheetExcel,
    SpreadsheetQuattro,
    SpreadsheetOther,
    StartSibling,
    ButtonSibling,
    StartQuattro,
    StartExcel,
    HelpContents,
    HelpSearch,
    About,
    AboutHelp,
    AboutUpdate,
    AboutWebsite,
    AboutHardware,
};

inline constexpr std::size_t commandCount = static_cast<std::size_t>(Command::AboutHardware) + 1;

/// How a command gets along with a run.
enum class DuringRun {
    Runs,      ///< in every phase; a run goes on beside it
    Holds,     ///< in every phase; trials that arrive wait until it is over, because it works on the current one
    WhileIdle, ///< not while a trial is collected, and a real-time view ends: it replaces the trial or needs the board
    NotWhileCollecting, ///< not while a trial is collected
};

/// One row of the table of commands: where it stands in the window and when it may run.
struct CommandRule {
    Command command;
    std::string_view actions; ///< object names of its menu item and tool button, parted by blanks
    DuringRun duringRun = DuringRun::Runs;
    bool letsEventsRun = false; ///< it opens a dialog or works for long: only one such command runs at a time
    std::string_view refusal{}; ///< what the status bar says where it may not run
};

/// The table, in the order of Command.
std::span<const CommandRule, commandCount> commandRules();
const CommandRule& ruleOf(Command command);

/// Whether a command may run in a phase.
bool mayRun(const CommandRule& rule, RunPhase phase);

} // namespace tavex2
