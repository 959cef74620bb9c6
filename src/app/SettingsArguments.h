#pragma once

#include "acquisition/records/ProgramState.h"
#include "base/Result.h"

#include <string>
#include <vector>

namespace tavex2 {

/// Applies settings given as NAME=VALUE, in order: those of the setup and the program's own. The error names the
/// argument.
Result<void> applySettings(ProgramState& state, const std::vector<std::string>& arguments);

} // namespace tavex2
