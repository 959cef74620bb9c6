#include "files/ExportCommands.h"

#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/FreeName.h"
#include "files/TextExport.h"
#include "platform/SaveName.h"

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
    if (path && exportTo(*path, current(WriteTab))) enterTab(*path);
}

void ExportCommands::mnuLumidor_Click() {
    if (!hasTrial()) return;
    exportLma({.filter = "All Files (*.*)|*.*|Lumidor Files (*.lma)|*.lma", .selected = 1}, current(WriteLma));
}

void ExportCommands::mnuLumidorO_Click() {
    exportLma({.filter = "Lumidor Files (*.lma)|*.lma|All Files (*.*)|*.*"},
              [this](const fs::path& to, const WriteOptions& how) {
                  return WriteOverlayLma(to, m_state.overlays, m_state.settings.sampling, m_state.TrialName(), how);
              });
}

/// Writes the trial that is the current one now.
ExportCommands::Write ExportCommands::current(WriteTrial write) const {
    return [write, trial = m_state.trials.CurrentTrial](const fs::path& to, const WriteOptions& how) {
        return write(to, *trial, how);
    };
}

void ExportCommands::exportLma(const FileKinds& kinds, const Write& write) {
    const auto path = askName("Save As", "lma", kinds);
    if (path && exportTo(*path, write)) tellExported(*path);
}

std::optional<fs::path> ExportCommands::askName(const std::string& title, const std::string& extension,
                                                const FileKinds& kinds) {
    FileDialogRequest request;
    request.title = title;
    request.defaultExtension = extension;
    request.filter = kinds.filter;
    request.filterIndex = kinds.selected;
    request.folder = pathFromText(m_state.paths.DataDir);
    request.initialName = m_state.TrialName() + "." + extension;
    const auto path = askNameToSave(m_dialogs, m_messages, request);
    return path && !path->empty() ? path : std::nullopt;
}

void ExportCommands::autosaveTab() {
    if (!m_state.autosaveWithoutAsking) {
        mnuTab_Click();
        return;
    }
    if (!hasTrial()) return;
    const fs::path folder = wholePath(pathFromText(m_state.paths.DataDir.empty() ? "." : m_state.paths.DataDir));
    const TrialPtr trial = m_state.trials.CurrentTrial;
    const Result<fs::path> written = [&] {
        const FileWorkShown work(m_state, m_view, "Exporting to " + trial->name + ".tab ...");
        return writeToFreeName(folder, trial->name, ".tab", [&](const fs::path& to) {
            return WriteTab(to, *trial, {IfExists::Refuse, progressOn(m_view)});
        });
    }();
    if (written)
        enterTab(written.value());
    else
        tellFailure(folder / pathFromText(trial->name + ".tab"), written.error());
}

bool ExportCommands::hasTrial() {
    if (hasCurrentTrial(m_state)) return true;
    tell(m_state, m_view, "There is no trial to export.");
    return false;
}

bool ExportCommands::exportTo(const fs::path& path, const Write& write) {
    const Result<void> written = [&] {
        const FileWorkShown work(m_state, m_view, "Exporting to " + pathText(path.filename()) + " ...");
        return write(path, {IfExists::Replace, progressOn(m_view)});
    }();
    if (!written) tellFailure(path, written.error());
    return static_cast<bool>(written);
}

void ExportCommands::tellFailure(const fs::path& path, const Error& error) {
    if (error.kind == ErrorKind::Cancelled)
        tell(m_state, m_view, error.text); // the user's own wish
    else
        m_messages.show(errorSaving(path, error));
}

void ExportCommands::tellExported(const fs::path& path) {
    tell(m_state, m_view, "Exported to " + pathText(path));
}

/// A table counts as a saved trial, and is what spreadsheets are started on.
void ExportCommands::enterTab(const fs::path& path) {
    m_state.LastTabExport = m_state.DataFile = pathText(path);
    m_state.changeCurrent([](Trial& trial) { trial.TrialNotSaved = false; });
    tellExported(path);
}

} // namespace tavex2
