#include "files/StimulusCommands.h"

#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/EnterAverage.h"
#include "files/RecentFiles.h"
#include "files/ReplaceTrial.h"
#include "platform/SaveName.h"

#include <system_error>
#include <utility>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

/// The part of a path in front of the first occurrence of the trial's name, as the data folder: a trial in a folder of
/// its own name, as Trial1/Trial1.plv, belongs beside the others. The file's own folder where that is none.
std::string folderInFrontOf(const std::string& trialName, const fs::path& path) {
    const std::string whole = pathText(path);
    const std::string front = whole.substr(0, whole.find(trialName));
    std::error_code ignored;
    return fs::is_directory(pathFromText(front), ignored) ? front : pathText(path.parent_path());
}

} // namespace

StimulusCommands::StimulusCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, FileView& view,
                                   std::function<bool()> saveTrial)
    : m_state(state), m_dialogs(dialogs), m_messages(messages), m_view(view), m_saveTrial(std::move(saveTrial)) {}

// Export --------------------------------------------------------------------------------------------------------------

void StimulusCommands::mnuPulvo_Click() {
    if (!hasCurrentTrial(m_state)) {
        tell(m_state, m_view, "There is no trial to export.");
        return;
    }
    FileDialogRequest request;
    request.title = "Export to Pulvo (.plv) file";
    request.defaultExtension = "plv";
    request.filter = "Pulvo Files (*.plv)|*.plv|All Files (*.*)|*.*";
    request.folder = pathFromText(m_state.paths.DataDir);
    request.initialName = m_state.TrialName() + ".plv";
    const auto path = askNameToSave(m_dialogs, m_messages, request);
    if (!path || path->empty()) return;

    m_state.paths.LastFile = pathText(*path);
    const TrialPtr trial = m_state.trials.CurrentTrial;
    const Result<void> written = [&] {
        const FileWorkShown work(m_state, m_view, "Exporting to " + pathText(path->filename()) + " ...");
        return WritePlv(*path, *trial, {IfExists::Replace, progressOn(m_view)});
    }();
    if (!written && written.error().kind == ErrorKind::Cancelled) {
        tell(m_state, m_view, written.error().text); // the user's own wish
        return;
    }
    if (!written) {
        m_messages.show(errorSaving(*path, written.error()));
        return;
    }
    rememberFile(m_state.paths, *path);
    m_state.changeCurrent([](Trial& each) { each.Unsaved = each.TrialNotSaved = each.imported = false; });
    enterAverage(m_state, m_messages, m_view);
    tell(m_state, m_view, "Exported to " + pathText(*path));
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
    const fs::path file = wholePath(path);
    Result<StimulusFile> read = [&] {
        const FileWorkShown work(m_state, m_view, "Opening " + pathText(file.filename()) + " ...");
        return readPlvFile(file, progressOn(m_view));
    }();
    if (!read) {
        tellUnreadable(file, read.error());
        return;
    }

    m_state.settings.sampling = read.value().sampling;
    const auto trial = trialOf(std::move(read).value(), file);
    trial->header = m_state.header; // the file names no channels
    trial->infoA = m_state.infoA;
    trial->infoB = m_state.infoB;
    trial->comments = m_state.comments;
    enterTrialOfFile(m_state, trial, folderInFrontOf(trial->name, file));
    m_state.settings.setup.DisplayInVolts = false;
    m_state.settings.setup.DisplayInSeconds = false;
    m_view.followDisplaySettings(); // draws the trial too
    tell(m_state, m_view, "Opened file: " + trial->name);
}

void StimulusCommands::tellUnreadable(const fs::path& path, const Error& error) {
    tell(m_state, m_view, error.text);
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
