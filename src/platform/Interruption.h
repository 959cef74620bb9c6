#pragma once

#include <utility>
#include <vector>

namespace tavex2 {

/// Turns the first request to end the program (Ctrl+C, a closed terminal, SIGTERM) into a question, for as long as it
/// lives, so that work can be ended in order; the second one ends the program at once. Text for a reader that is gone
/// is an error of its stream meanwhile, and no reason to end. Command line only; one may live inside the other.
class Interruption {
  public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// Whether the program was asked to end since the outermost object was made. Any thread.
    static bool requested();

  private:
    using Handler = void (*)(int);
    std::vector<std::pair<int, Handler>> m_before; ///< what was done at each signal
};

} // namespace tavex2
