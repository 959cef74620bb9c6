#pragma once

#include "base/Result.h"

#include <filesystem>
#include <ostream>

namespace tavex2 {

/// A trial file to be written in another format.
struct ConvertRequest {
    std::filesystem::path from; ///< .lmb or .plv
    std::filesystem::path to;   ///< .lmb, .plv, .tab or .lma, by its extension
};

/// Reads a trial file and writes it anew, with the title that it has, and so with its own number and time. An existing
/// file is replaced when the new one is complete. `err` is told of a file without identification. Errors: those of the
/// reader and the writers; WrongUsage for an extension that is none of these.
Result<void> convertFile(const ConvertRequest& request, std::ostream& err);

} // namespace tavex2
