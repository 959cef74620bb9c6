#pragma once

#include <string>
#include <vector>

namespace tavex2 {

/// The words of the command line as UTF-8, in the form in which `main` gets them.
class ProgramArguments {
  public:
    /// As given to `main`; a system that gives them elsewhere in full is asked there.
    ProgramArguments(int argc, char** argv);

    int count() const { return static_cast<int>(m_values.size()); }
    const char* const* values() const { return m_values.data(); }

  private:
    std::vector<std::string> m_words;
    std::vector<const char*> m_values; ///< the words' beginnings
};

} // namespace tavex2
