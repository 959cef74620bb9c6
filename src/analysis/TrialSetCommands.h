#pragma once

#include "acquisition/records/ProgramState.h"
#include "platform/Messages.h"

#include <functional>

namespace tavex2 {

/// What the commands on the sets of trials need of the window.
struct TrialSetView {
    std::function<void()> refresh;      ///< the state has changed
    std::function<void()> RedrawTrials; ///< the graphs are to show the trials anew
};

/// The commands of the Data menu that fill and empty the overlay set and empty the average, and Undo, which brings back
/// what was emptied last. User-interface thread.
class TrialSetCommands {
  public:
    TrialSetCommands(ProgramState& state, Messages& messages, TrialSetView view);

    /// Adds the current trial to the overlay set; a refusal is told. The trial counts as overlaid only after success.
    void mnuOverlay_Click();
    /// Empties the overlay set; the current trial may be added again.
    void mnuClear_Click();
    /// Empties the average.
    void mnuClearAverage_Click();
    /// Takes back the last of the two commands above. Trials that have joined a set since then leave it and may join
    /// again.
    void mnuUndo_Click();

  private:
    void tell(const std::string& notice);

    ProgramState& m_state;
    Messages& m_messages;
    TrialSetView m_view;
};

} // namespace tavex2
