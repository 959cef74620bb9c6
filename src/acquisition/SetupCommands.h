#pragma once

#include "acquisition/records/ProgramState.h"
#include "platform/FileDialogs.h"
#include "platform/Messages.h"

#include <functional>

namespace tavex2 {

/// The commands of the Options menu that keep all settings in a setup file. User-interface thread only.
class SetupCommands {
  public:
    /// `updateCaption` shows the trial's name, which follows the setup file's.
    SetupCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, std::function<void()> updateCaption);

    /// Asks for a name and writes every setting. The file's name becomes the trial's and its path the last setup file.
    /// A cancelled dialog ends the command silently; a failed write is told, and the names stay as they were.
    void SaveSetup();

  private:
    ProgramState& m_state;
    FileDialogs& m_dialogs;
    Messages& m_messages;
    std::function<void()> m_updateCaption;
};

} // namespace tavex2
