#include "files/StimulusCommands.h"

#include "base/PathText.h"
#include "files/RecentFiles.h"
#include "files/ReplaceTrial.h"

#include <system_error>
#include <utility>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

/// The part of a path in front of the first occurrence of the trial's name, which is what protocols expect as the data
/// folder; the file's own folder where that is none.
std::string folderInFrontOf(const std::string& trialName, const fs::path& path) {
    const std::string whole = pathText(path);
    const std::string front = whole.substr(0, whole.find(trialName));
    std::error_code ignored;
    return fs::is_directory(pathFromText(front), ignored) ? front : pathText(path.parent_path());
}

} // namespace

void enterImportedTrial(ProgramState& state, StimulusFile file, const fs::path& path) {
    state.settings.sampling = file.sampling;
    enterTrialOfFile(state, std::move(file.samples), path, ".plv");
    state.paths.DataDir = folderInFrontOf(state.TrialName, path);
}

StimulusCommands::StimulusCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, FileView& view,
                                   std::function<bool()> saveTrial)
    : m_state(state), m_dialogs(dialogs), m_messages(messages), m_view(view), m_saveTrial(std::move(saveTrial)) {}

// Export --------------------------------------------------------------------------------------------------------------

void StimulusCommands::mnuPulvo_Click() {
    if (!hasCurrentTrial(m_state)) {
        m_view.setStatusText("There is no trial to export.");
        return;
    }
    FileDialogRequest request;
    request.title = "Export to Pulvo (.plv) file";
    request.defaultExtension = "plv";
    request.filter = "Pulvo Files (*.plv)|*.plv|All Files (*.*)|*.*";
    request.folder = pathFromText(m_state.paths.DataDir);
    request.initialName = m_state.TrialName + ".plv";
    const auto path = m_dialogs.askSaveName(request);
    if (!path || path->empty()) return;

    m_state.paths.LastFile = pathText(fs::absolute(*path));
    m_view.setBusyPointer(true);
    const Result<void> written = WritePlv(*path, m_state, {IfExists::Replace, progressOn(m_view)});
    m_view.setBusyPointer(false);
    if (!written && written.error().kind == ErrorKind::Cancelled) {
        m_view.setStatusText(written.error().text); // the user's own wish
        return;
    }
    if (!written) {
        m_messages.show({"Error saving " + pathText(*path) + "\n" + written.error().text, "Error",
                         MessageIcon::Exclamation, MessageButtons::Ok});
        return;
    }
    rememberFile(m_state.paths, *path);
    m_state.flags.TrialNotSaved = false;
    m_view.UpdateMenus();
    m_view.UpdateCaption();
    if (!m_state.trials.AddedToAverage) enterAverage();
}

void StimulusCommands::enterAverage() {
    TrialBuffers& trials = m_state.trials;
    const Result<void> added = AddTrialToAverage(trials, trials.CurrentTrial, trials.CurrentSettings);
    if (!added) {
        m_messages.show({added.error().text, "Error", MessageIcon::Exclamation, MessageButtons::Ok});
        return;
    }
    trials.AddedToAverage = true;
    m_view.RedrawTrials();
}

// Import --------------------------------------------------------------------------------------------------------------

void StimulusCommands::mnuOpen_Click() {
    FileDialogRequest request;
    request.title = "Open";
    request.filter = "All Files (*.*)|*.*|Pulvo Files (*.plv)|*.plv";
    request.filterIndex = 1;
    request.folder = pathFromText(m_state.paths.DataDir);
    const auto path = m_dialogs.askOpenName(request);
    if (path && !path->empty()) importPlv(*path);
}

void StimulusCommands::importPlv(const fs::path& path) {
    if (!mayReplaceTrial(m_state, m_messages, m_saveTrial)) return;
    const fs::path file = fs::absolute(path);
    m_view.setBusyPointer(true);
    Result<StimulusFile> read = readPlvFile(file, progressOn(m_view));
    m_view.setBusyPointer(false);
    if (!read) {
        tellUnreadable(file, read.error());
        return;
    }

    enterImportedTrial(m_state, std::move(read).value(), file);
    m_state.settings.setup.DisplayInVolts = false;
    m_state.settings.setup.DisplayInSeconds = false;

    m_view.followDisplaySettings(); // draws the trial too
    m_view.UpdateMenus();
    m_view.setCaption("File: " + m_state.TrialName);
    m_view.setStatusText("Opened file: " + m_state.TrialName);
}

void StimulusCommands::tellUnreadable(const fs::path& path, const Error& error) {
    m_view.setStatusText(error.text);
    if (error.kind == ErrorKind::Cancelled) return; // the user's own wish
    if (error.kind == ErrorKind::BadFormat)
        m_messages.show({"The file\r\n" + pathText(path) + "\r\nis not a Pulvo file!", "Error", MessageIcon::None,
                         MessageButtons::Ok});
    else if (error.kind == ErrorKind::WrongVersion)
        m_messages.show({"The file \r\n" + pathText(path) +
                             "\r\nappears to be a newer version!  Use the most recent Tavex application.",
                         "Error", MessageIcon::None, MessageButtons::Ok});
    else
        m_messages.show({"Error reading file.  File may be empty, corrupt or of wrong format.", "File read error",
                         MessageIcon::Exclamation, MessageButtons::Ok});
}

} // namespace tavex2
