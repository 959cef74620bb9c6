#pragma once

#include "base/Result.h"

#include <filesystem>
#include <ostream>
#include <vector>

namespace tavex2 {

/// What `tavex2 overlay` is asked for.
struct OverlayRequest {
    std::vector<std::filesystem::path> files; ///< the trials, and last the table to write
};

/// Writes the average of up to 16 compatible trials as a table for the sibling analysis program, named for the last
/// trial. Errors, naming the file: those of the readers, of adding an overlay and of writing the table.
Result<void> overlayFiles(const OverlayRequest& request, std::ostream& err);

} // namespace tavex2
