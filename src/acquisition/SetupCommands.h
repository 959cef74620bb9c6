#pragma once

#include "acquisition/records/ProgramState.h"
#include "platform/CWAI.h"
#include "platform/FileDialogs.h"
#include "platform/Messages.h"

#include <filesystem>

namespace tavex2 {

/// What the commands of the Options menu show; the main window fulfils it. User-interface thread only.
class OptionsView {
  public:
    virtual ~OptionsView() = default;

    /// The state has changed: everything that follows from it is to be shown anew.
    virtual void refresh() = 0;
    /// The window is maximised, or as it was.
    virtual void setMaximized(bool maximized) = 0;
    /// Opens the setup dialog and returns when it is closed.
    virtual void mnuProperties_Click() = 0;
    /// The display settings may have changed: units and scaling of the graphs are to follow them.
    virtual void followDisplaySettings() = 0;
};

/// The commands of the Options menu: toggles, and all settings kept in a setup file. User-interface thread only.
class SetupCommands {
  public:
    SetupCommands(ProgramState& state, CWAI& analogInput, FileDialogs& dialogs, Messages& messages, OptionsView& view);

    /// An item of the menu: 0 autosave, 1 debug mode, 2 ask to reset, 3 start maximised, 4 save offsets, 5 load, 6
    /// save. A toggle inverts its field and then shows it, whatever its check mark showed before.
    void mnuOption_Click(int index);

    /// What the setup dialog's OK does to the menu: two check marks show the dialog's boxes beside their own, as
    /// StateFlags tells.
    void afterSetup();

    /// Asks for a setup file and reads it. The file's name becomes the trial's and its path the last setup file; then
    /// the setup dialog opens, whose OK applies the settings. The program's own settings are those beside the file,
    /// else their defaults. A failure is told; what was read before it stays.
    void LoadSetup();

    /// The same for a file that is known.
    void LoadSetupFile(const std::filesystem::path& path);

    /// Asks for a name and writes every setting, those of the program's own beside the file. The file's name becomes
    /// the trial's and its path the last setup file. A cancelled dialog ends the command silently; a failed write is
    /// told, and the names stay as they were.
    void SaveSetup();

  private:
    FileDialogRequest fileRequest(const char* title) const;
    void remember(const std::filesystem::path& path);

    ProgramState& m_state;
    CWAI& m_analogInput;
    FileDialogs& m_dialogs;
    Messages& m_messages;
    OptionsView& m_view;
};

} // namespace tavex2
