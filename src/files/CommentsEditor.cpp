#include "files/CommentsEditor.h"

#include "base/Decimal.h"

namespace tavex2 {

CommentsEditor::CommentsEditor(TrialComments& comments) : m_comments(comments) {
    for (std::size_t row = 0; row < m_lines.size(); ++row)
        if (!comments[row].neverSet()) m_lines[row].assign(comments[row].bytes().data(), comments[row].bytes().size());
}

std::string CommentsEditor::proposal(int row) const {
    return FixedText<mostCharacters>(line(row)).trimmed();
}

void CommentsEditor::enter(int row, const std::string& answer) {
    if (!answer.empty()) m_lines[static_cast<std::size_t>(row)] = answer.substr(0, mostCharacters);
}

void CommentsEditor::cmdClear_Click() {
    m_lines.fill(std::string());
}

void CommentsEditor::cmdDateTime_Click(const std::string& date, const std::string& time, int trialNumber) {
    // Date and time run together: programs that read the line cut it there.
    m_lines.back() = "Date & time:   " + date + time + " for trial " + zeroPadded(trialNumber, 4);
}

void CommentsEditor::cmdSave_Click() {
    for (std::size_t row = 0; row < m_lines.size(); ++row)
        m_comments[row].assign(m_lines[row]);
}

} // namespace tavex2
