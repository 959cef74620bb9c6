#pragma once

#include "acquisition/records/Trial.h"
#include "base/Result.h"
#include "files/FileProgress.h"
#include "files/Import.h"

#include <filesystem>
#include <ostream>

namespace tavex2 {

/// For work on a file that a request to end the program (see Interruption) breaks off.
FileProgress untilInterrupted();

/// Reads a binary trial file. One without the identification is told on `err` and read from its first byte, as the
/// window does. The errors are those of the reader.
Result<LmbFile> readLmbOfAnyKind(const std::filesystem::path& path, std::ostream& err);

/// The trial of a binary trial file or, by its extension, a stimulus file (.plv). The errors are those of the readers.
Result<TrialPtr> readTrialFile(const std::filesystem::path& path, std::ostream& err);

} // namespace tavex2
