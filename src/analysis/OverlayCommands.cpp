#include "analysis/OverlayCommands.h"

#include "analysis/Overlays.h"

#include <utility>

namespace tavex2 {

OverlayCommands::OverlayCommands(ProgramState& state, Messages& messages, std::function<void()> updateMenus)
    : m_state(state), m_messages(messages), m_updateMenus(std::move(updateMenus)) {}

void OverlayCommands::mnuOverlay_Click() {
    if (!hasCurrentTrial(m_state)) return; // after a collection in debug mode there is none
    const Result<void> added =
        AddOverlay(m_state.overlays, m_state.TrialName, m_state.trials.CurrentSettings, m_state.trials.CurrentTrial);
    if (!added) m_messages.show({added.error().text, "Error", MessageIcon::None, MessageButtons::Ok});
    m_state.flags.AddedToOverlays = static_cast<bool>(added);
    m_updateMenus();
}

void OverlayCommands::mnuClear_Click() {
    ClearOverlays(m_state.overlays);
    m_state.flags.AddedToOverlays = false;
    m_updateMenus();
}

} // namespace tavex2
