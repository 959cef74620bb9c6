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
    FileDialogRequest request;
    request.title = "Export to tab-delimited (.tab) ASCII file";
    request.defaultExtension = "tab";
    request.filter = "Tab-delimited Files (*.tab)|*.tab|All Files (*.*)|*.*";
    request.folder = pathFromText(m_state.paths.DataDir);
    request.initialName = m_state.TrialName + ".tab";
    const auto path = m_dialogs.askSaveName(request);
    if (!path || path->empty()) return;
    const auto write = [this](const fs::path& to, const WriteOptions& how) { return WriteTab(to, m_state, how); };
    if (exportTo(*path, write)) enterTab(*path);
}

void ExportCommands::mnuLumidor_Click() {
    if (!hasTrial()) return;
    exportLma("All Files (*.*)|*.*|Lumidor Files (*.lma)|*.lma", 1,
              [this](const fs::path& to, const WriteOptions& how) { return WriteLma(to, m_state, how); });
}

void ExportCommands::mnuLumidorO_Click() {
    exportLma("Lumidor Files (*.lma)|*.lma|All Files (*.*)|*.*", 0,
              [this](const fs::path& to, const WriteOptions& how) { return WriteOverlayLma(to, m_state, how); });
}

void ExportCommands::exportLma(const std::string& filter, int filterIndex, const Write& write) {
    FileDialogRequest request;
    request.title = "Save As";
    request.defaultExtension = "lma";
    request.filter = filter;
    request.filterIndex = filterIndex;
    request.folder = pathFromText(m_state.paths.DataDir);
    request.initialName = m_state.TrialName + ".lma";
    const auto path = m_dialogs.askSaveName(request);
    if (!path || path->empty()) return;
    if (exportTo(*path, write)) m_view.setStatusText("Exported to " + pathText(*path));
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
    return {ifExists, [this](int done, int of) { return m_view.fileProgress(done, of); }};
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
