#include "files/ExportCommands.h"

#include "base/PathText.h"
#include "files/FreeName.h"
#include "files/TextExport.h"

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

} // namespace

ExportCommands::ExportCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, FileView& view)
    : m_state(state), m_dialogs(dialogs), m_messages(messages), m_view(view) {}

void ExportCommands::mnuTab_Click() {
    if (!hasTrial()) return;
    const auto path = askName("Export to tab-delimited (.tab) ASCII file", "tab",
                              {.filter = "Tab-delimited Files (*.tab)|*.tab|All Files (*.*)|*.*"});
    if (!path) return;
    const auto write = [this](const fs::path& to, const WriteOptions& how) { return WriteTab(to, m_state, how); };
    if (exportTo(*path, write)) enterTab(*path);
}

void ExportCommands::mnuLumidor_Click() {
    if (!hasTrial()) return;
    exportLma({.filter = "All Files (*.*)|*.*|Lumidor Files (*.lma)|*.lma", .selected = 1},
              [this](const fs::path& to, const WriteOptions& how) { return WriteLma(to, m_state, how); });
}

void ExportCommands::mnuLumidorO_Click() {
    exportLma({.filter = "Lumidor Files (*.lma)|*.lma|All Files (*.*)|*.*"},
              [this](const fs::path& to, const WriteOptions& how) { return WriteOverlayLma(to, m_state, how); });
}

void ExportCommands::exportLma(const FileKinds& kinds, const Write& write) {
    const auto path = askName("Save As", "lma", kinds);
    if (path && exportTo(*path, write)) m_view.setStatusText("Exported to " + pathText(*path));
}

std::optional<fs::path> ExportCommands::askName(const std::string& title, const std::string& extension,
                                                const FileKinds& kinds) {
    FileDialogRequest request;
    request.title = title;
    request.defaultExtension = extension;
    request.filter = kinds.filter;
    request.filterIndex = kinds.selected;
    request.folder = pathFromText(m_state.paths.DataDir);
    request.initialName = m_state.TrialName + "." + extension;
    const auto path = m_dialogs.askSaveName(request);
    return path && !path->empty() ? path : std::nullopt;
}

void ExportCommands::autosaveTab() {
    if (!m_state.autosaveWithoutAsking) {
        mnuTab_Click();
        return;
    }
    if (!hasTrial()) return;
    const fs::path folder = pathFromText(m_state.paths.DataDir.empty() ? "." : m_state.paths.DataDir);
    m_view.setBusyPointer(true);
    const Result<fs::path> written = writeToFreeName(folder, m_state.TrialName, ".tab", [this](const fs::path& to) {
        return WriteTab(to, m_state, options(IfExists::Refuse));
    });
    m_view.setBusyPointer(false);
    if (written)
        enterTab(written.value());
    else
        tellFailure(folder / pathFromText(m_state.TrialName + ".tab"), written.error());
}

bool ExportCommands::hasTrial() {
    if (hasCurrentTrial(m_state)) return true;
    m_view.setStatusText("There is no trial to export.");
    return false;
}

WriteOptions ExportCommands::options(IfExists ifExists) {
    return {ifExists, progressOn(m_view)};
}

bool ExportCommands::exportTo(const fs::path& path, const Write& write) {
    m_view.setBusyPointer(true);
    const Result<void> written = write(path, options(IfExists::Replace));
    m_view.setBusyPointer(false);
    if (!written) tellFailure(path, written.error());
    return static_cast<bool>(written);
}

void ExportCommands::tellFailure(const fs::path& path, const Error& error) {
    if (error.kind == ErrorKind::Cancelled)
        m_view.setStatusText(error.text); // the user's own wish
    else
        m_messages.show({"Error saving " + pathText(path) + "\n" + error.text, "Error", MessageIcon::Exclamation,
                         MessageButtons::Ok});
}

void ExportCommands::enterTab(const fs::path& path) {
    m_state.LastTabExport = m_state.DataFile = pathText(fs::absolute(path));
    m_view.setStatusText("Exported to " + m_state.LastTabExport);
}

} // namespace tavex2
