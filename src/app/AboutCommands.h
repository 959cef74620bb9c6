#pragma once

#include "platform/Messages.h"
#include "platform/SettingsStore.h"
#include "platform/Shell.h"

#include <functional>
#include <string>

namespace tavex2 {

/// Web pages that the Help menu opens; an empty one is told.
struct WebPages {
    std::string software; ///< this program's, with its newest version
    std::string hardware; ///< the board vendor's
};

/// The pages as the settings give them, with their defaults.
WebPages webPages(const SettingsStore& store);

/// The lower items of the Help menu.
class AboutCommands {
  public:
    /// `endProgram` ends it at once, without any question.
    AboutCommands(const SettingsStore& store, Messages& messages, Shell& shell, std::function<void()> endProgram);

    /// Item 1 is the system's help on help, 2 the update dialog, 3 and 4 the web pages; item 0, the About box, is the
    /// window's own.
    void mnuAbout_Click(int index);

  private:
    void update();
    void open(const std::string& page, ShowMode show);

    const SettingsStore& m_store;
    Messages& m_messages;
    Shell& m_shell;
    std::function<void()> m_endProgram;
};

} // namespace tavex2
