#pragma once

#include "acquisition/records/ProgramState.h"

#include <string>

namespace tavex2 {

/// What the menus, the tool bar and the status bar show for a state; always worked out anew, never step by step.
struct MenuState {
    bool dataCommands = false;    ///< mnuSave, mnuSaveAs, mnuExport, mnuInfo, "Save", "Zoom", "Lumidor2", "Information"
    bool overlay = false;         ///< mnuOverlay
    bool overlayCommands = false; ///< mnuExportOverlay, mnuViewOverlay, mnuClear
    bool digital = false;         ///< mnuDigital; worked out when the View menu opens
    bool legendChecked = false;   ///< mnuLegend
};

MenuState menuState(const ProgramState& state);

/// The main window's caption: the trial's name, with " (Unsaved)" behind it while the trial is not saved.
std::string captionFor(const ProgramState& state);

} // namespace tavex2
