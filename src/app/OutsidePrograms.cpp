#include "app/OutsidePrograms.h"

#include "app/StoredSettings.h"
#include "base/PathText.h"

#include <array>

namespace tavex2 {

namespace {

constexpr const char* sibling = "Lumidor2.exe";
/// The spreadsheets that the menus name, in the order of the menu that chooses one.
constexpr std::array spreadsheets{"Excel.exe", "QPW.exe"};

std::string inQuotes(const std::string& text) {
    return '"' + text + '"';
}

Message saveFirst(const std::string& text) {
    return {text, "Save Data First", MessageIcon::Information, MessageButtons::Ok};
}

} // namespace

int spreadsheetItem(const std::string& program) {
    if (program == spreadsheets[0]) return 0;
    return program == spreadsheets[1] ? 1 : 2;
}

OutsidePrograms::OutsidePrograms(ProgramState& state, const OutsideServices& services)
    : m_state(state), m_services(services) {}

/// The program's own setting, or the laboratory's where that is empty.
std::string OutsidePrograms::siblingFolder() const {
    const std::string own = readText(m_services.store, stored::siblingOwnProgramDir, "");
    return own.empty() ? m_state.paths.SiblingProgramDir : own;
}

bool OutsidePrograms::siblingFound() const {
    return m_services.shell.canRead(siblingFolder(), sibling);
}

void OutsidePrograms::mnuProgram_Click(int index) {
    if (index == 0)
        startSibling();
    else
        openTableWith(index == 1 ? spreadsheets[1] : spreadsheets[0]); // the other way round than where one is chosen
}

void OutsidePrograms::startSibling() {
    if (m_state.TrialNotSaved()) {
        m_services.messages.show(
            saveFirst("You must save your current data first to a file before starting Lumidor2."));
        return;
    }
    const std::string& data = m_state.paths.DataDir;
    // The program starts in that folder anyway.
    (void)writeText(m_services.store, stored::siblingDataDir, data);
    ShellRequest request{.file = m_services.shell.pathOf(siblingFolder(), sibling),
                         .parameters = {},
                         .folder = data,
                         .onlyThisProgram = true};
    const std::string savedName = m_state.DataPresent() ? m_state.trials.CurrentTrial->savedName : std::string();
    if (!m_state.LastTabExport.empty())
        request.parameters = inQuotes(m_state.LastTabExport);
    else if (savedName.empty())
        request.file = sibling; // found through the search path
    else
        request.parameters = savedName; // as it is: the program takes the rest of the line
    m_services.shell.execute(request);
    if (!m_services.shell.lastStarted())
        m_services.messages.show(
            {"Lumidor2 could not be started: there is no " +
                 (request.file == sibling ? request.file + " on the search path." : request.file + ".") +
                 " Install it, or enter its folder as the setting \"" + std::string(stored::siblingOwnProgramDir.key) +
                 "\" of " + std::string(stored::siblingOwnProgramDir.application) + ".",
             "Lumidor2", MessageIcon::Information, MessageButtons::Ok});
}

void OutsidePrograms::openTableWith(const std::string& program) {
    if (m_state.LastTabExport.empty())
        m_services.messages.show(saveFirst("You must Export your current data first to a tab-delimited file."));
    else
        m_services.shell.execute({.file = program, .parameters = inQuotes(m_state.LastTabExport), .folder = {}});
}

void OutsidePrograms::mnuSpreadsheet_Click(int index) {
    std::string& program = m_state.paths.SpreadsheetProgram;
    if (index < static_cast<int>(spreadsheets.size())) {
        program = spreadsheets[static_cast<std::size_t>(index)];
        return;
    }
    FileDialogRequest request;
    request.title = "Select a spreadsheet.";
    request.initialName = "*.exe";
    request.filter = "Programs|*.exe|All files|*.*";
    request.folder = pathFromText(m_programFolder);
    const auto chosen = m_services.dialogs.askOpenName(request);
    if (!chosen || chosen->empty()) return;
    program = pathText(chosen->filename());
    m_programFolder = pathText(chosen->parent_path());
}

void OutsidePrograms::mnuDigital_Click() {
    openTableWith(m_state.paths.SpreadsheetProgram);
}

void OutsidePrograms::mnuExplorer_Click() {
    m_services.shell.run("Explorer.exe " + m_state.paths.DataDir);
}

void OutsidePrograms::mnuNotepad_Click() {
    m_services.shell.run("notepad.exe");
    if (!m_services.shell.lastStarted())
        m_services.messages.show(
            {"No text editor was found on this computer. Install one, or choose one for text files "
             "in your desktop's settings.",
             "Notepad", MessageIcon::Information, MessageButtons::Ok});
}

} // namespace tavex2
