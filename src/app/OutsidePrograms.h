#pragma once

#include "acquisition/records/ProgramState.h"
#include "platform/Messages.h"
#include "platform/Shell.h"

namespace tavex2 {

/// The commands that hand data to other programs.
class OutsidePrograms {
  public:
    OutsidePrograms(const ProgramState& state, Messages& messages, Shell& shell);

    /// Opens the last tab-delimited export in the spreadsheet program; without one the user is asked to export first.
    /// A start that fails is not told.
    void mnuDigital_Click();

  private:
    const ProgramState& m_state;
    Messages& m_messages;
    Shell& m_shell;
};

} // namespace tavex2
