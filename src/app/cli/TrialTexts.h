#pragma once

#include "acquisition/records/ProgramState.h"
#include "base/Result.h"

#include <string>
#include <vector>

namespace tavex2 {

/// Labels, units and comments as the command line takes them, in UTF-8.
struct TrialTexts {
    std::vector<std::string> labels;   ///< K=TEXT; K is the place of a channel in the list, counted from 0
    std::vector<std::string> units;    ///< likewise
    std::vector<std::string> comments; ///< up to four lines
};

/// Enters them for the trials to come, whose channel list is known. Errors WrongUsage, naming the argument: a channel
/// that is not collected, a text that a trial file would cut or has no characters for, more than four comments.
Result<void> enterTexts(ProgramState& state, const TrialTexts& texts);

} // namespace tavex2
