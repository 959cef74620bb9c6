#pragma once

#include "acquisition/records/ProgramState.h"
#include "files/FileView.h"
#include "platform/FileDialogs.h"
#include "platform/Messages.h"

#include <filesystem>
#include <functional>

namespace tavex2 {

/// The commands that open a trial file. Called by the menu, by dropped files and by the command line's file. Whatever
/// goes wrong is told, and the current trial, header, comments and settings stay as they were.
class OpenCommands {
  public:
    /// `saveTrial` is the Save command; True when the trial was saved.
    OpenCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, FileView& view,
                 std::function<bool()> saveTrial);

    /// Asks for a binary trial file and opens it.
    void mnuOpenLumidor2_Click();

    /// Opens a file that is known. An unsaved trial that it would replace is asked about first. `told` False leaves out
    /// the box that says what was read, for one of several files.
    void openLmb(const std::filesystem::path& path, bool told = true);

    /// Reads a binary trial file into the program's state; True on success. A file of another kind is told and then
    /// read as one without identification.
    bool ReadLmb(const std::filesystem::path& path, bool told = true);

  private:
    ProgramState& m_state;
    FileDialogs& m_dialogs;
    Messages& m_messages;
    FileView& m_view;
    std::function<bool()> m_saveTrial;
};

} // namespace tavex2
