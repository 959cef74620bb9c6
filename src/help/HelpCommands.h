#pragma once

#include "help/HelpViewer.h"
#include "help/Manual.h"
#include "platform/Messages.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tavex2 {

/// The upper items of the Help menu, the key F1 and the texts about single controls. The manual is read when it is
/// first asked for, so that it costs nothing at the start. User-interface thread.
class HelpCommands {
  public:
    /// `folder` holds the manual; empty where there is none.
    HelpCommands(std::filesystem::path folder, HelpViewer& viewer, Messages& messages);

    /// Shows the table of contents.
    void mnuContents_Click();
    /// Shows the search.
    void mnuSearch_Click();
    /// Shows the page about what has the focus: object names, innermost first.
    void helpAbout(const std::vector<std::string>& names);

    /// What a control of a window is for; empty where the manual does not tell.
    std::string whatsThis(const std::string& window, const std::string& control);

  private:
    void show(const std::function<Result<void>(const Manual&)>& open);
    const Result<Manual>& manual();

    std::filesystem::path m_folder;
    HelpViewer& m_viewer;
    Messages& m_messages;
    std::optional<Result<Manual>> m_manual;
};

/// The folder of the manual beside a program: that of an installation, or one in the program's own folder; empty when
/// neither holds a manual.
std::filesystem::path helpFolder(const std::filesystem::path& programFolder);

} // namespace tavex2
