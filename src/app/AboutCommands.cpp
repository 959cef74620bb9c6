#include "app/AboutCommands.h"

#include "app/StoredSettings.h"
#include "app/Version.h"

#include <utility>

namespace tavex2 {

namespace {

const std::string programName = "Tavex2";

} // namespace

WebPages webPages(const SettingsStore& store) {
    return {.software = readText(store, stored::softwarePage, ""),
            .hardware = readText(store, stored::hardwarePage, "https://www.ni.com/")};
}

AboutCommands::AboutCommands(const SettingsStore& store, Messages& messages, Shell& shell,
                             std::function<void()> endProgram)
    : m_store(store), m_messages(messages), m_shell(shell), m_endProgram(std::move(endProgram)) {}

void AboutCommands::mnuAbout_Click(int index) {
    switch (index) {
    case 1:
        m_shell.run("WinHlp32.EXE");
        if (!m_shell.lastStarted())
            m_messages.show({"This computer has no help of its own that could be opened. Help on " + programName +
                                 " is under Help > Contents.",
                             programName, MessageIcon::Information, MessageButtons::Ok});
        break;
    case 2:
        update();
        break;
    case 3:
        open(webPages(m_store).software, ShowMode::WithoutActivation);
        break;
    case 4:
        open(webPages(m_store).hardware, ShowMode::WithoutActivation);
        break;
    default:
        break;
    }
}

void AboutCommands::update() {
    const MessageAnswer download = m_messages.show(
        {"Do you want download a new version of " + programName +
             " from the web?\n\nPress Yes to download now or No to continue using this version [" + versionText + "].",
         "Update " + programName + " Yes/No?", MessageIcon::Question, MessageButtons::YesNo});
    if (download != MessageAnswer::Yes) return;
    const MessageAnswer exit = m_messages.show(
        {"To use the new version you must exit and reload " + programName + ".\n\nDo you want to exit now?", "Exit?",
         MessageIcon::Question, MessageButtons::YesNo});
    open(webPages(m_store).software, ShowMode::Normal);
    if (exit == MessageAnswer::Yes) m_endProgram();
}

void AboutCommands::open(const std::string& page, ShowMode show) {
    if (page.empty())
        m_messages.show({"No web page has been set for " + programName + ". Its address belongs into the setting \"" +
                             std::string(stored::softwarePage.key) + "\".",
                         programName, MessageIcon::Information, MessageButtons::Ok});
    else
        m_shell.execute({.file = page, .parameters = {}, .folder = {}, .show = show});
}

} // namespace tavex2
