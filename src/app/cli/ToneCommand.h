#pragma once

#include "base/Result.h"

#include <filesystem>

namespace tavex2 {

/// A stimulus tone to be written.
struct ToneRequest {
    std::filesystem::path file;
    double frequencyHz = 500;
    double durationSeconds = 1;
};

/// Writes a tone as a WAVE file, in place of an older one. The errors are those of AtomicFile.
Result<void> writeToneFile(const ToneRequest& request);

} // namespace tavex2
