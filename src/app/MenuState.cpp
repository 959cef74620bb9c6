#include "app/MenuState.h"

namespace tavex2 {

MenuState menuState(const ProgramState& state) {
    const StateFlags& flags = state.flags;
    return {.dataCommands = flags.DataPresent,
            .overlay = flags.DataPresent && !flags.AddedToOverlays,
            .overlayCommands = state.overlays.OverlayCount > 0,
            .digital = !state.DataFile.empty(),
            .legendChecked = flags.LegendShown};
}

std::string captionFor(const ProgramState& state) {
    return state.flags.Unsaved ? state.TrialName + " (Unsaved)" : state.TrialName;
}

} // namespace tavex2
