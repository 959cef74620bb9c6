#pragma once

#include "acquisition/records/ProgramState.h"
#include "files/FileIO.h"
#include "files/FileView.h"
#include "platform/FileDialogs.h"
#include "platform/Messages.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tavex2 {

/// The commands that export the current trial, or the overlaid ones, as text. A cancelled dialog ends a command
/// silently; a failure is told and leaves neither half a file nor a changed state. User-interface thread only.
class ExportCommands {
  public:
    ExportCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, FileView& view);

    /// Asks for a name and writes the tab-delimited table.
    void mnuTab_Click();
    /// Asks for a name and writes the table for the sibling analysis program.
    void mnuLumidor_Click();

    /// Asks for a name and writes the average of the overlaid trials for the sibling analysis program.
    void mnuLumidorO_Click();

    /// Saves a finished trial as a table: the command above, or, when the user wants no question, under the trial's
    /// name or the next free one in the data directory, shown in the status bar.
    void autosaveTab();

  private:
    using Write = std::function<Result<void>(const std::filesystem::path&, const WriteOptions&)>;
    using WriteTrial = Result<void> (*)(const std::filesystem::path&, const Trial&, const WriteOptions&);

    /// The kinds of files that a dialog offers.
    struct FileKinds {
        std::string filter;
        int selected = 0; ///< the entry that is chosen at first
    };

    bool hasTrial();
    Write current(WriteTrial write) const;
    void exportLma(const FileKinds& kinds, const Write& write);
    /// No value when the user cancelled.
    std::optional<std::filesystem::path> askName(const std::string& title, const std::string& extension,
                                                 const FileKinds& kinds);
    bool exportTo(const std::filesystem::path& path, const Write& write);
    void tellFailure(const std::filesystem::path& path, const Error& error);
    void tellExported(const std::filesystem::path& path);
    void enterTab(const std::filesystem::path& path);

    ProgramState& m_state;
    FileDialogs& m_dialogs;
    Messages& m_messages;
    FileView& m_view;
};

} // namespace tavex2
