#include "acquisition/SetupCommands.h"

#include "acquisition/SetupFile.h"
#include "base/PathText.h"

#include <utility>

namespace tavex2 {

SetupCommands::SetupCommands(ProgramState& state, FileDialogs& dialogs, Messages& messages,
                             std::function<void()> updateCaption)
    : m_state(state), m_dialogs(dialogs), m_messages(messages), m_updateCaption(std::move(updateCaption)) {}

void SetupCommands::SaveSetup() {
    std::string& lastFile = m_state.paths.LastSetupFile;
    FileDialogRequest request;
    request.title = "Save Tavex2 setup properties (.SET) file";
    request.defaultExtension = "set";
    request.filter = "Tavex2 setup file (.set)|*.set|All Files (*.*)|*.*|";
    request.initialName = lastFile.empty() ? m_state.TrialName + ".set" : lastFile;
    std::optional<std::filesystem::path> path = m_dialogs.askSaveName(request);
    if (!path || path->empty()) return;
    if (!path->has_extension()) path->replace_extension(".set");

    if (const auto written = writeSetupFile(*path, m_state.settings); !written) {
        m_messages.show({"Error saving " + pathText(*path) + "\n" + written.error().text, "Error",
                         MessageIcon::Exclamation, MessageButtons::Ok});
        return;
    }
    m_state.TrialName = pathText(path->stem());
    lastFile = pathText(*path);
    m_updateCaption();
}

} // namespace tavex2
