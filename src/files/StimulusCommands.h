#pragma once

#include "acquisition/records/ProgramState.h"
#include "files/FileView.h"
#include "files/StimulusFile.h"
#include "platform/FileDialogs.h"
#include "platform/Messages.h"

#include <filesystem>
#include <functional>

namespace tavex2 {

/// The commands that exchange single trials with the stimulus program. User-interface thread only.
class StimulusCommands {
  public:
    /// `saveTrial` is the Save command; True when the trial was saved.
    StimulusCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, FileView& view,
                     std::function<bool()> saveTrial);

    /// Asks for a name and exports the current trial, which then counts as saved and enters the average, once.
    void mnuPulvo_Click();

    /// Asks for a file and imports its trial.
    void mnuOpen_Click();
    /// Imports a file that is known. Its name becomes the trial's, the graphs are labelled in thousandths. A file that
    /// cannot be read is told and changes nothing.
    void importPlv(const std::filesystem::path& path);

  private:
    void tellUnreadable(const std::filesystem::path& path, const Error& error);

    ProgramState& m_state;
    FileDialogs& m_dialogs;
    Messages& m_messages;
    FileView& m_view;
    std::function<bool()> m_saveTrial;
};

} // namespace tavex2
