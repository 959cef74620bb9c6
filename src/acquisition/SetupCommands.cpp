#include "acquisition/SetupCommands.h"

#include "acquisition/Protocol.h"
#include "acquisition/SetupFile.h"
#include "base/PathText.h"
#include "platform/SaveName.h"

namespace tavex2 {

SetupCommands::SetupCommands(ProgramState& state, CWAI& analogInput, FileDialogs& dialogs, Messages& messages,
                             OptionsView& view)
    : m_state(state), m_analogInput(analogInput), m_dialogs(dialogs), m_messages(messages), m_view(view) {}

// Toggles -------------------------------------------------------------------------------------------------------------

void SetupCommands::mnuOption_Click(int index) {
    SetupOptions& setup = m_state.settings.setup;
    StateFlags& flags = m_state.flags;
    switch (index) {
    case 0:
        setup.Autosave = !setup.Autosave;
        break;
    case 1:
        flags.DebugMode = !flags.DebugMode;
        break;
    case 2:
        setup.PauseToReset = !setup.PauseToReset;
        flags.resetMark.reset();
        break;
    case 3:
        setup.StartMaximized = !setup.StartMaximized;
        flags.maximizedMark.reset();
        m_view.setMaximized(setup.StartMaximized);
        break;
    case 4:
        setup.SaveOffsets = !setup.SaveOffsets;
        break;
    case 5:
        LoadSetup();
        break;
    case 6:
        SaveSetup();
        break;
    default:
        break;
    }
    m_view.refresh();
}

void SetupCommands::afterSetup() {
    m_state.flags.resetMark = m_state.settings.setup.SaveOffsets;
    m_state.flags.maximizedMark = m_state.settings.setup.PauseToReset;
    m_view.refresh();
}

// Setup files ---------------------------------------------------------------------------------------------------------

FileDialogRequest SetupCommands::fileRequest(const char* title) const {
    const std::string& lastFile = m_state.paths.LastSetupFile;
    FileDialogRequest request;
    request.title = title;
    request.defaultExtension = "set";
    request.filter = "Tavex2 setup file (.set)|*.set|All Files (*.*)|*.*|";
    const std::string& name = m_state.TrialName();
    request.initialName = lastFile.empty() ? (name.empty() ? "Setup" : name) + ".set" : lastFile;
    return request;
}

void SetupCommands::remember(const std::filesystem::path& path) {
    m_state.rename(pathText(path.stem()));
    m_state.paths.LastSetupFile = pathText(path);
    m_view.refresh();
}

void SetupCommands::LoadSetup() {
    const auto path = m_dialogs.askOpenName(fileRequest("Open Tavex2 setup properties (.SET) file"));
    if (path && !path->empty()) LoadSetupFile(*path);
}

void SetupCommands::LoadSetupFile(const std::filesystem::path& path) {
    remember(path);
    const Result<void> read = readSetupFile(path, m_state.settings);
    m_view.followDisplaySettings();
    if (read) {
        if (const Result<void> own = readOwnSettings(path, ownSettings(m_state)); !own)
            m_messages.show({own.error().text, "Error Reading Options", MessageIcon::Exclamation, MessageButtons::Ok});
        m_view.refresh();
        // The dialog shows the control's device, and its OK stores that: it has to be the file's.
        m_analogInput.selectDevice(m_state.settings.setup.Device);
        m_view.mnuProperties_Click();
    } else if (read.error().kind == ErrorKind::WrongVersion) {
        m_messages.show({"The version number of the setup file is incompatible.\r\n\r\nCreate a new one and resave it.",
                         "Setup File Version Invalid", MessageIcon::Exclamation, MessageButtons::Ok});
    } else {
        m_messages.show({"Error reading options file.  File may not be compatible.", "Error Reading Options",
                         MessageIcon::Exclamation, MessageButtons::Ok});
    }
}

void SetupCommands::SaveSetup() {
    const auto path = askNameToSave(m_dialogs, m_messages, fileRequest("Save Tavex2 setup properties (.SET) file"));
    if (!path || path->empty()) return;
    if (const auto written = writeProtocol(*path, m_state.settings, ownSettings(m_state)); !written) {
        m_messages.show(errorSaving(*path, written.error()));
        return;
    }
    remember(*path);
}

} // namespace tavex2
