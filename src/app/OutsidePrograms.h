#pragma once

#include "acquisition/records/ProgramState.h"
#include "platform/FileDialogs.h"
#include "platform/Messages.h"
#include "platform/SettingsStore.h"
#include "platform/Shell.h"

#include <string>

namespace tavex2 {

/// Which item of the spreadsheet menu stands for a program: 0 and 1 for the two that it names, 2 for any other.
int spreadsheetItem(const std::string& program);

/// What the commands that start other programs need.
struct OutsideServices {
    SettingsStore& store;
    Messages& messages;
    FileDialogs& dialogs;
    Shell& shell;
};

/// The commands that hand data to other programs. When a program is missing for which the desktop has no other one, the
/// user is told; other starts that fail are left to the desktop, which says so itself.
class OutsidePrograms {
  public:
    OutsidePrograms(ProgramState& state, const OutsideServices& services);

    /// Whether the sibling analysis program is there; asked each time the Analyze menu opens.
    bool siblingFound() const;

    /// Item 0 starts the sibling program on the last table or the saved file, 1 and 2 a spreadsheet on the last table.
    void mnuProgram_Click(int index);

    /// Chooses the spreadsheet program; spreadsheetItem() then tells which item is to carry the check mark.
    void mnuSpreadsheet_Click(int index);

    /// Opens the last tab-delimited export in the spreadsheet program; without one the user is asked to export first.
    void mnuDigital_Click();

    /// Opens the data folder in the file manager.
    void mnuExplorer_Click();
    /// Starts the text editor.
    void mnuNotepad_Click();

  private:
    std::string siblingFolder() const;
    void startSibling();
    void openTableWith(const std::string& program);

    ProgramState& m_state;
    OutsideServices m_services;
    std::string m_programFolder; ///< in which a spreadsheet was last chosen
};

} // namespace tavex2
