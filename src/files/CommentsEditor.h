#pragma once

#include "acquisition/records/LmbHeader.h"

#include <array>
#include <string>

namespace tavex2 {

/// The comment form without its window: works on a copy of the four comment lines, which Done stores. Texts are
/// Windows-1252, as the file holds them, so that a character is a byte.
class CommentsEditor {
  public:
    static constexpr int lines = 4;
    static constexpr std::size_t mostCharacters = 60; ///< that a user can enter in a line

    /// Starts with the lines as they are stored, padding included; lines never set are empty.
    explicit CommentsEditor(TrialComments& comments);

    const std::string& line(int row) const { return m_lines[static_cast<std::size_t>(row)]; }

    /// What the input box for a line begins with: its first 60 characters without blanks at both ends.
    std::string proposal(int row) const;
    /// The answer of the input box; an empty one changes nothing, a longer one is cut to 60 characters.
    void enter(int row, const std::string& answer);

    void cmdClear_Click();
    /// Puts date, time and the trial's number into the last line; `date` and `time` are the system's short forms.
    void cmdDateTime_Click(const std::string& date, const std::string& time, int trialNumber);
    /// Stores the lines, fitted to 61 characters.
    void cmdSave_Click();

  private:
    TrialComments& m_comments;
    std::array<std::string, lines> m_lines;
};

} // namespace tavex2
