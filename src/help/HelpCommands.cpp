#include "help/HelpCommands.h"

#include <utility>

namespace tavex2 {

namespace {

constexpr const char* title = "Tavex2";

} // namespace

HelpCommands::HelpCommands(std::filesystem::path folder, HelpViewer& viewer, Messages& messages)
    : m_folder(std::move(folder)), m_viewer(viewer), m_messages(messages) {}

const Result<Manual>& HelpCommands::manual() {
    if (!m_manual) m_manual = Manual::load(m_folder);
    return *m_manual;
}

void HelpCommands::show(const std::function<Result<void>(const Manual&)>& open) {
    if (m_folder.empty()) {
        m_messages.show({"Unable to display Help Contents. There is no Help associated with this project.", title,
                         MessageIcon::Information, MessageButtons::Ok});
        return;
    }
    const Result<void> shown = manual() ? open(manual().value()) : Result<void>(manual().error());
    if (!shown) m_messages.show({shown.error().text, title, MessageIcon::None, MessageButtons::Ok});
}

void HelpCommands::mnuContents_Click() {
    show([this](const Manual& read) { return m_viewer.showContents(read); });
}

void HelpCommands::mnuSearch_Click() {
    show([this](const Manual& read) { return m_viewer.showSearch(read); });
}

void HelpCommands::helpAbout(const std::vector<std::string>& names) {
    show([&](const Manual& read) { return m_viewer.showPage(read, read.addressFor(names)); });
}

std::string HelpCommands::whatsThis(const std::string& window, const std::string& control) {
    if (m_folder.empty() || !manual()) return {};
    const ManualPage* page = manual().value().pageOfWindow(window);
    if (page == nullptr) return {};
    const auto told = page->controls.find(control);
    return told != page->controls.end() ? told->second : std::string();
}

std::filesystem::path helpFolder(const std::filesystem::path& programFolder) {
    for (const std::filesystem::path& folder :
         {programFolder / ".." / "share" / "tavex2" / "help", programFolder / "help"}) {
        std::error_code error;
        if (std::filesystem::exists(folder / Manual::descriptionFile, error)) return folder.lexically_normal();
    }
    return {};
}

} // namespace tavex2
