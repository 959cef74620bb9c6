#pragma once

#include "acquisition/records/ProgramState.h"
#include "files/FileIO.h"
#include "files/FileView.h"
#include "platform/FileDialogs.h"
#include "platform/LocalTime.h"
#include "platform/Messages.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tavex2 {

/// The commands that save the current trial as a binary trial file: Save, Save As and autosave. Called by the main
/// window's menus, the run controller's autosave and the exit prompt. User-interface thread only.
///
/// Each returns whether the trial was saved. After success the file's name is the trial's, its folder is the data
/// directory, no "not saved" flag is left and the trial has entered the average, once. Otherwise nothing has changed
/// and the user has been told why, unless it was their own Cancel.
class SaveCommands {
  public:
    SaveCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, FileView& view,
                 std::function<LocalTime()> now = localTimeNow);

    /// Asks for a name and saves. A dialog that gives an empty path hands over to Save As.
    bool mnuSave_Click();
    bool mnuSaveAs_Click();

    /// Saves a finished trial: the Save command, or, when the user wants no question, under the trial's name or the
    /// next free one in the data directory, shown in the status bar.
    bool autosave();

  private:
    bool hasTrial();
    std::optional<std::filesystem::path> askName(const std::string& title);
    bool saveChosen(const std::filesystem::path& path);
    bool saveUnasked();
    void showFailure(const std::filesystem::path& path, const Error& error);
    std::string titleOf(const Trial& trial) const;
    void enterSaved(const WrittenLmb& written);

    ProgramState& m_state;
    FileDialogs& m_dialogs;
    Messages& m_messages;
    FileView& m_view;
    std::function<LocalTime()> m_now;
};

} // namespace tavex2
