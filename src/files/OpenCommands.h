#pragma once

#include "acquisition/records/ProgramState.h"
#include "files/FileView.h"
#include "files/Import.h"
#include "platform/FileDialogs.h"
#include "platform/Messages.h"

#include <filesystem>
#include <functional>

namespace tavex2 {

/// Makes what a trial file holds the current trial, its header the channel-label table, its numbers the settings', and
/// its name and folder the program's. The trial counts as saved, not yet averaged and not yet overlaid.
void enterOpenedTrial(ProgramState& state, LmbFile file, const std::filesystem::path& path);

/// The commands that open a trial file. Called by the menu, by dropped files and by the command line's file. Whatever
/// goes wrong is told, and the current trial, header, comments and settings stay as they were.
class OpenCommands {
  public:
    /// `saveTrial` is the Save command; True when the trial was saved.
    OpenCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, FileView& view,
                 std::function<bool()> saveTrial);

    /// Asks for a binary trial file and opens it.
    void mnuOpenLumidor2_Click();

    /// Opens a file that is known. An unsaved trial that it would replace is asked about first.
    void openLmb(const std::filesystem::path& path);

    /// Reads a binary trial file into the program's state; True on success. A file of another kind is told and then
    /// read as one without identification.
    bool ReadLmb(const std::filesystem::path& path);

  private:
    ProgramState& m_state;
    FileDialogs& m_dialogs;
    Messages& m_messages;
    FileView& m_view;
    std::function<bool()> m_saveTrial;
};

} // namespace tavex2
