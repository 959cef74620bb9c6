#include "acquisition/SetupCommands.h"

#include "acquisition/SetupFile.h"
#include "base/PathText.h"

namespace tavex2 {

SetupCommands::SetupCommands(ProgramState& state, CWAI& analogInput, FileDialogs& dialogs, Messages& messages,
                             OptionsView& view)
    : m_state(state), m_analogInput(analogInput), m_dialogs(dialogs), m_messages(messages), m_view(view) {}

// Toggles -------------------------------------------------------------------------------------------------------------

void SetupCommands::mnuOption_Click(int index) {
    SetupOptions& setup = m_state.settings.setup;
    const auto toggle = [&](auto& field) {
        field = !field;
        m_view.setOptionChecked(index, field);
    };
    switch (index) {
    case 0:
        toggle(setup.Autosave);
        break;
    case 1:
        toggle(m_state.flags.DebugMode);
        break;
    case 2:
        toggle(setup.PauseToReset);
        break;
    case 3:
        toggle(setup.StartMaximized);
        m_view.setMaximized(setup.StartMaximized);
        break;
    case 4:
        toggle(setup.SaveOffsets);
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
}

void SetupCommands::showOptionsAfterSetup() {
    const SetupOptions& setup = m_state.settings.setup;
    m_view.setOptionChecked(0, setup.Autosave);
    m_view.setOptionChecked(2, setup.SaveOffsets);
    m_view.setOptionChecked(3, setup.PauseToReset);
}

// Setup files ---------------------------------------------------------------------------------------------------------

FileDialogRequest SetupCommands::fileRequest(const char* title) const {
    const std::string& lastFile = m_state.paths.LastSetupFile;
    FileDialogRequest request;
    request.title = title;
    request.defaultExtension = "set";
    request.filter = "Tavex2 setup file (.set)|*.set|All Files (*.*)|*.*|";
    request.initialName = lastFile.empty() ? m_state.TrialName + ".set" : lastFile;
    return request;
}

void SetupCommands::remember(const std::filesystem::path& path) {
    m_state.TrialName = pathText(path.stem());
    m_state.paths.LastSetupFile = pathText(path);
    m_view.UpdateCaption();
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
    std::optional<std::filesystem::path> path =
        m_dialogs.askSaveName(fileRequest("Save Tavex2 setup properties (.SET) file"));
    if (!path || path->empty()) return;
    if (!path->has_extension()) path->replace_extension(".set");

    if (const auto written = writeSetupFile(*path, m_state.settings); !written) {
        m_messages.show({"Error saving " + pathText(*path) + "\n" + written.error().text, "Error",
                         MessageIcon::Exclamation, MessageButtons::Ok});
        return;
    }
    remember(*path);
}

} // namespace tavex2
