#include "files/SaveCommands.h"

#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/EnterAverage.h"
#include "files/RecentFiles.h"
#include "platform/SaveName.h"

#include <utility>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

constexpr const char* trialExtension = ".lmb";

} // namespace

SaveCommands::SaveCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, FileView& view,
                           std::function<LocalTime()> now)
    : m_state(state), m_dialogs(dialogs), m_messages(messages), m_view(view), m_now(std::move(now)) {}

bool SaveCommands::mnuSave_Click() {
    if (!hasTrial()) return false;
    const auto path = askName("Save data in Lumidor2 binary (.LMB) file");
    if (path && path->empty()) return mnuSaveAs_Click();
    return path && saveChosen(*path);
}

bool SaveCommands::mnuSaveAs_Click() {
    if (!hasTrial()) return false;
    const auto path = askName("Save as Lumidor2 binary data file");
    return path && !path->empty() && saveChosen(*path);
}

bool SaveCommands::autosave() {
    if (!m_state.autosaveWithoutAsking) return mnuSave_Click();
    return hasTrial() && saveUnasked();
}

bool SaveCommands::hasTrial() {
    if (hasCurrentTrial(m_state)) return true;
    tell(m_state, m_view, "There is no trial to save.");
    return false;
}

std::optional<fs::path> SaveCommands::askName(const std::string& title) {
    FileDialogRequest request;
    request.title = title;
    request.defaultExtension = "lmb";
    request.filter = "Lumidor2 binary file (.lmb)|*.lmb|All Files (*.*)|*.*|";
    request.folder = pathFromText(m_state.paths.DataDir);
    request.initialName = m_state.TrialName() + trialExtension;
    return askNameToSave(m_dialogs, m_messages, request);
}

bool SaveCommands::saveChosen(const fs::path& path) {
    const TrialPtr trial = m_state.trials.CurrentTrial;
    Result<LmbHeader> written = [&] {
        const FileWorkShown work(m_state, m_view, "Saving " + pathText(path.filename()) + " ...");
        return WriteLmb(path, *trial, titleOf(*trial), {IfExists::Replace, progressOn(m_view)});
    }();
    if (!written) {
        showFailure(path, written.error());
        return false;
    }
    enterSaved({path, std::move(written).value()});
    return true;
}

bool SaveCommands::saveUnasked() {
    const std::string& dataDir = m_state.paths.DataDir;
    const fs::path folder = wholePath(pathFromText(dataDir.empty() ? "." : dataDir));
    const TrialPtr trial = m_state.trials.CurrentTrial;
    Result<WrittenLmb> written = [&] {
        const FileWorkShown work(m_state, m_view, "Saving " + trial->name + trialExtension + " ...");
        return WriteLmbToFreeName(folder, *trial, titleOf(*trial), progressOn(m_view));
    }();
    if (!written) {
        showFailure(folder / pathFromText(trial->name + trialExtension), written.error());
        return false;
    }
    enterSaved(written.value());
    return true;
}

std::string SaveCommands::titleOf(const Trial& trial) const {
    return lmbTitle(trial.number, m_now());
}

void SaveCommands::showFailure(const fs::path& path, const Error& error) {
    if (error.kind == ErrorKind::Cancelled)
        tell(m_state, m_view, error.text); // the user's own wish
    else
        m_messages.show(errorSaving(path, error));
}

/// What a successful save changes in the program.
void SaveCommands::enterSaved(const WrittenLmb& written) {
    m_state.changeCurrent([&](Trial& trial) {
        trial.name = pathText(written.path.stem());
        trial.savedName = trial.name + trialExtension;
        trial.file = pathText(written.path);
        trial.header = written.header;
        trial.Unsaved = trial.TrialNotSaved = trial.imported = false;
    });
    m_state.header = written.header;
    rememberFile(m_state.paths, written.path);
    m_state.paths.DataDir = pathText(written.path.parent_path());
    enterAverage(m_state, m_messages, m_view);
    tell(m_state, m_view, "Saved as " + pathText(written.path));
}

} // namespace tavex2
