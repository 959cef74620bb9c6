#include "files/SaveCommands.h"

#include "base/PathText.h"
#include "files/FileIO.h"
#include "files/RecentFiles.h"

#include <system_error>
#include <utility>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

const fs::path trialExtension = ".lmb";

Message errorMessage(std::string text) {
    return {std::move(text), "Error", MessageIcon::Exclamation};
}

fs::path absolutePath(const fs::path& path) {
    std::error_code error;
    fs::path absolute = fs::absolute(path, error);
    return error ? path : absolute;
}

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
    m_view.setStatusText("There is no trial to save.");
    return false;
}

std::optional<fs::path> SaveCommands::askName(const std::string& title) {
    FileDialogRequest request;
    request.title = title;
    request.defaultExtension = "lmb";
    request.filter = "Lumidor2 binary file (.lmb)|*.lmb|All Files (*.*)|*.*|";
    request.folder = pathFromText(m_state.paths.DataDir);
    request.initialName = m_state.TrialName + ".lmb";
    return m_dialogs.askSaveName(request);
}

bool SaveCommands::saveChosen(const fs::path& chosen) {
    fs::path path = absolutePath(chosen);
    if (path.extension().empty() || path.extension() == ".") {
        path.replace_extension(trialExtension);
        if (!mayReplace(path)) return false; // the dialog asked about the name that was typed, not about this one
    }

    m_view.setBusyPointer(true);
    const Result<void> written = WriteLmb(path, m_state, m_now(), {IfExists::Replace, progressOn(m_view)});
    m_view.setBusyPointer(false);
    if (written)
        enterSaved(path);
    else
        showFailure(path, written.error());
    return static_cast<bool>(written);
}

bool SaveCommands::mayReplace(const fs::path& path) {
    std::error_code error;
    if (!fs::exists(path, error)) return true;
    return m_messages.show({pathText(path) + " already exists.\nDo you want to replace it?", "Replace File",
                            MessageIcon::Question, MessageButtons::YesNo}) == MessageAnswer::Yes;
}

bool SaveCommands::saveUnasked() {
    const fs::path folder = absolutePath(m_state.paths.DataDir.empty() ? "." : pathFromText(m_state.paths.DataDir));
    m_view.setBusyPointer(true);
    const Result<fs::path> written = WriteLmbToFreeName(folder, m_state, m_now(), progressOn(m_view));
    m_view.setBusyPointer(false);
    if (!written) {
        showFailure(folder / pathFromText(m_state.TrialName + ".lmb"), written.error());
        return false;
    }
    enterSaved(written.value());
    m_view.setStatusText("Saved as " + pathText(written.value()));
    return true;
}

void SaveCommands::showFailure(const fs::path& path, const Error& error) {
    if (error.kind == ErrorKind::Cancelled) {
        m_view.setStatusText(error.text); // the user's own wish
        return;
    }
    m_messages.show(errorMessage("Error saving " + pathText(path) + "\n" + error.text));
}

/// What a successful save changes in the program.
void SaveCommands::enterSaved(const fs::path& path) {
    m_state.TrialName = pathText(path.stem());
    m_state.LastSavedName = m_state.TrialName + ".lmb";
    rememberFile(m_state.paths, path);
    m_state.paths.DataDir = pathText(path.parent_path());
    m_state.flags.TrialNotSaved = false;

    TrialBuffers& trials = m_state.trials;
    Result<void> averaged;
    if (!trials.AddedToAverage) {
        averaged = AddTrialToAverage(trials, trials.CurrentTrial, trials.CurrentSettings);
        trials.AddedToAverage = static_cast<bool>(averaged);
        if (averaged) m_view.RedrawTrials();
    }
    m_view.UpdateMenus();
    m_view.UpdateCaption();
    if (!averaged) m_messages.show(errorMessage(averaged.error().text));
}

} // namespace tavex2
