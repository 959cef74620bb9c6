#pragma once

#include "acquisition/records/ProgramState.h"
#include "platform/Messages.h"

#include <functional>

namespace tavex2 {

/// The commands of the Data menu that fill and empty the overlay set.
class OverlayCommands {
  public:
    /// `updateMenus` computes the menus anew.
    OverlayCommands(ProgramState& state, Messages& messages, std::function<void()> updateMenus);

    /// Adds the current trial to the set; a refusal is told. The trial counts as overlaid only after success.
    void mnuOverlay_Click();
    /// Empties the set; the current trial may be added again.
    void mnuClear_Click();

  private:
    ProgramState& m_state;
    Messages& m_messages;
    std::function<void()> m_updateMenus;
};

} // namespace tavex2
