#include "files/OpenCommands.h"

#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/ReplaceTrial.h"

#include <utility>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

/// Makes what a trial file holds the current trial, its header the channel-label table and its numbers the settings'.
void enterOpenedTrial(ProgramState& state, LmbFile file, const fs::path& path) {
    const auto trial = trialOf(std::move(file), path, state.settings.sampling);
    SamplingSettings& sampling = state.settings.sampling;
    const FixedText<50> channels = sampling.Channels; // the board's, and not the file's
    sampling = trial->sampling;
    sampling.Channels = channels;
    state.header = trial->header;
    state.infoA = trial->infoA;
    state.infoB = trial->infoB;
    state.comments = trial->comments;
    enterTrialOfFile(state, trial, pathText(path.parent_path()));
}

} // namespace

OpenCommands::OpenCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages, FileView& view,
                           std::function<bool()> saveTrial)
    : m_state(state), m_dialogs(dialogs), m_messages(messages), m_view(view), m_saveTrial(std::move(saveTrial)) {}

void OpenCommands::mnuOpenLumidor2_Click() {
    FileDialogRequest request;
    request.title = "Open";
    request.defaultExtension = ".lmb";
    request.filter = "Tavex/Lumidor binary Files (*.lmb)|*.lmb|All Files (*.*)|*.*";
    request.folder = pathFromText(m_state.paths.DataDir);
    const auto path = m_dialogs.askOpenName(request);
    if (path && !path->empty()) openLmb(*path);
}

void OpenCommands::openLmb(const fs::path& path, bool told) {
    if (!mayReplaceTrial(m_state, m_messages, m_saveTrial) || !ReadLmb(path, told)) return;
    m_view.RedrawTrials();
    tell(m_state, m_view, "Opened file: " + pathText(path.filename()));
}

bool OpenCommands::ReadLmb(const fs::path& path, bool told) {
    const fs::path file = wholePath(path);
    LmbStart start = LmbStart::Identification;
    if (isForeign(file)) {
        start = LmbStart::Header;
        m_messages.show({"File format was not a Lumidor2 binary file (.LMB) or file is corrupt.", "File Type Error",
                         MessageIcon::Exclamation, MessageButtons::Ok});
    }
    Result<LmbFile> read = [&] {
        const FileWorkShown work(m_state, m_view, "Opening " + pathText(path.filename()) + " ...");
        return readLmbFile(file, progressOn(m_view), start);
    }();
    if (!read) {
        tell(m_state, m_view, read.error().text);
        if (read.error().kind != ErrorKind::Cancelled)
            m_messages.show({"Error reading file.  File may be empty, corrupt or of wrong format.", "File read error",
                             MessageIcon::Exclamation, MessageButtons::Ok});
        return false;
    }
    enterOpenedTrial(m_state, std::move(read).value(), file);
    if (told)
        m_messages.show({"File read successfully.  # channels = " + std::to_string(m_state.header.NumChannels) +
                             ",  samples/channel = " + std::to_string(m_state.header.NumSamples),
                         "Tavex2", MessageIcon::None, MessageButtons::Ok});
    return true;
}

} // namespace tavex2
