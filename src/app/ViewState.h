#pragma once

#include "acquisition/records/ProgramState.h"
#include "app/Commands.h"
#include "display/ZoomCommands.h"

#include <array>
#include <optional>
#include <string>

namespace tavex2 {

/// How a command looks in menus and tool bar.
struct CommandLook {
    bool enabled = true;
    std::optional<bool> checked = std::nullopt; ///< its mark; none for a command without one
};

/// How far the trial in progress is.
struct ProgressLook {
    bool known = false; ///< False while the trigger is awaited: the bar moves without saying how far
    double share = 0;   ///< 0 to 1
    double seconds = 0; ///< taken so far
    double ofSeconds = 0;
};

/// Everything that the main window shows and that is not a graph's picture.
struct ViewState {
    std::string caption;
    std::string status; ///< first panel of the status bar
    std::string device; ///< second panel
    std::array<CommandLook, commandCount> commands;
    bool exportMenu = false;        ///< mnuExport
    bool exportOverlayMenu = false; ///< mnuExportOverlay
    bool busyPointer = false;
    bool waitingShown = false; ///< the window frmWaiting
    bool legendShown = false;
    std::optional<ProgressLook> progress;
    std::string currentHint; ///< on the current trial's graph while it is empty
    std::string averageTip;  ///< tool tip and description of the average's graph

    const CommandLook& look(Command command) const { return commands[static_cast<std::size_t>(command)]; }
};

/// What the window knows and the program's state does not.
struct ViewInputs {
    ZoomState zoom;
    std::string device;        ///< as the analog-input control describes it
    bool siblingFound = false; ///< the sibling analysis program is there
};

/// What the main window is to show. Worked out anew from the whole state each time, never step by step.
ViewState viewState(const ProgramState& state, const ViewInputs& inputs);

} // namespace tavex2
