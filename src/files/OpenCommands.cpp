#include "files/OpenCommands.h"

#include "base/PathText.h"
#include "base/Rounding.h"
#include "files/ReplaceTrial.h"

#include <utility>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

} // namespace

void enterOpenedTrial(ProgramState& state, LmbFile file, const fs::path& path) {
    SamplingSettings& sampling = state.settings.sampling;
    sampling.NumChannels = file.header.NumChannels;
    sampling.NumSamples = file.header.NumSamples;
    sampling.Rate = static_cast<std::int32_t>(roundHalfEven(file.header.Rate));
    sampling.Duration = static_cast<float>(file.header.Duration);
    sampling.Repeat = 1; // the graphs' extent is that of this one trial

    enterTrialOfFile(state, std::move(file.samples), path, ".lmb");
    // The list of the settings belongs to the board; a file's channels are known by their places.
    state.trials.CurrentSettings.Channels.assign("0:" + std::to_string(sampling.NumChannels - 1));
    state.paths.DataDir = pathText(path.parent_path());
    state.header = file.header;
    state.infoA = file.infoA;
    state.infoB = file.infoB;
    state.comments = file.comments;
}

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

void OpenCommands::openLmb(const fs::path& path) {
    if (!mayReplaceTrial(m_state, m_messages, m_saveTrial) || !ReadLmb(path)) return;
    m_view.RedrawTrials();
    m_view.UpdateMenus();
    m_view.UpdateCaption();
    m_view.setStatusText("Opened file: " + pathText(path.filename()));
}

bool OpenCommands::ReadLmb(const fs::path& path) {
    const fs::path file = fs::absolute(path);
    m_view.setBusyPointer(true);
    LmbStart start = LmbStart::Identification;
    if (isForeign(file)) {
        start = LmbStart::Header;
        m_messages.show({"File format was not a Lumidor2 binary file (.LMB) or file is corrupt.", "File Type Error",
                         MessageIcon::Exclamation, MessageButtons::Ok});
    }
    Result<LmbFile> read = readLmbFile(file, progressOn(m_view), start);
    m_view.setBusyPointer(false);
    if (!read) {
        m_view.setStatusText(read.error().text);
        if (read.error().kind != ErrorKind::Cancelled)
            m_messages.show({"Error reading file.  File may be empty, corrupt or of wrong format.", "File read error",
                             MessageIcon::Exclamation, MessageButtons::Ok});
        return false;
    }
    enterOpenedTrial(m_state, std::move(read).value(), file);
    m_messages.show({"File read successfully.  # channels = " + std::to_string(m_state.header.NumChannels) +
                         ",  samples/channel = " + std::to_string(m_state.header.NumSamples),
                     "Tavex2", MessageIcon::None, MessageButtons::Ok});
    return true;
}

} // namespace tavex2
