#pragma once

#include "base/Result.h"

#include <filesystem>

namespace tavex2 {

/// A trial file to be written in another format.
struct ConvertRequest {
    std::filesystem::path from; ///< .lmb or .plv
    std::filesystem::path to;   ///< .lmb, .plv, .tab or .lma, by its extension
};

/// Reads a trial file and writes it anew. An existing file is replaced when the new one is complete
/// (a .plv file: written over). Errors: those of
/// the reader and the writers; InvalidValue for an extension that is none of these.
Result<void> convertFile(const ConvertRequest& request);

} // namespace tavex2
