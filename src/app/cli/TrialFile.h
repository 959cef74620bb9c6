#pragma once

#include "acquisition/records/Trial.h"
#include "base/Result.h"

#include <filesystem>

namespace tavex2 {

/// The trial of a binary trial file or, by its extension, a stimulus file (.plv). The errors are those of the readers.
Result<TrialPtr> readTrialFile(const std::filesystem::path& path);

} // namespace tavex2
