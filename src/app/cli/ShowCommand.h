#pragma once

#include "base/Result.h"

#include <filesystem>
#include <ostream>

namespace tavex2 {

struct ShowRequest {
    std::filesystem::path file;
    bool json = false;
};

/// Writes what a file holds. A setup file (.set): every setting by its name, with the program's own beside it. A trial
/// file: header, labels and units of the slots in use, comments and, for each channel, minimum, maximum and mean in
/// volts. As text for people, or as one JSON object with the records' field names: settings in single precision as
/// short as they are exact, what is no number as null. `err` is told of a trial file without identification and of own
/// settings that cannot be read. The errors are those of the readers.
Result<void> showFile(const ShowRequest& request, std::ostream& out, std::ostream& err);

} // namespace tavex2
