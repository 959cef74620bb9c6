#pragma once

#include "acquisition/records/ProgramState.h"
#include "base/Result.h"

#include <filesystem>

namespace tavex2 {

/// Makes the trial of a binary trial file or, by its extension, a stimulus file (.plv) the current one of `state`, as
/// opening it in the window does. The errors are those of the readers.
Result<void> readTrialFile(const std::filesystem::path& path, ProgramState& state);

} // namespace tavex2
