#pragma once

#include "base/Result.h"

#include <cstdint>
#include <filesystem>
#include <fstream>

namespace tavex2 {

/// A file that is read from its start.
struct InputFile {
    std::ifstream stream;
    std::uint64_t bytes = 0; ///< its size
};

/// Opens an ordinary file, or one that a link names, for reading. A folder, pipe or device is refused unopened, so
/// nothing ever waits for another program. Called by all readers, on any thread. Errors as readError().
Result<InputFile> openForReading(const std::filesystem::path& path);

} // namespace tavex2
