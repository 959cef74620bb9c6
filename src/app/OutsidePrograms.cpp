#include "app/OutsidePrograms.h"

namespace tavex2 {

OutsidePrograms::OutsidePrograms(const ProgramState& state, Messages& messages, Shell& shell)
    : m_state(state), m_messages(messages), m_shell(shell) {}

void OutsidePrograms::mnuDigital_Click() {
    if (m_state.LastTabExport.empty()) {
        m_messages.show({"You must Export your current data first to a tab-delimited file.", "Save Data First",
                         MessageIcon::Information, MessageButtons::Ok});
        return;
    }
    (void)m_shell.execute(
        {.file = m_state.paths.SpreadsheetProgram, .parameters = '"' + m_state.LastTabExport + '"', .folder = {}});
}

} // namespace tavex2
