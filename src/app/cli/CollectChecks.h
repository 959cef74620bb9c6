#pragma once

#include "acquisition/records/AcqSettings.h"
#include "base/Result.h"
#include "files/TrialFormats.h"

#include <filesystem>
#include <vector>

namespace tavex2 {

/// What a collection without a window is going to write.
struct PlannedFiles {
    const AcqSettings& settings;
    int trials = 1; ///< collections, each of so many repeats as the settings say
    std::filesystem::path folder;
    std::vector<const TrialFormat*> formats;
};

/// Finds out before the subject has made an effort whether the trials will have a place to go: the folder is there and
/// can be written to, has room for all files together, and takes their longest name. Errors say what to do.
Result<void> checkPlace(const PlannedFiles& planned);

} // namespace tavex2
