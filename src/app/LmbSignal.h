#pragma once

#include "platform/devices/RecordedSignal.h"

#include <filesystem>
#include <memory>

namespace tavex2 {

/// Opens a trial file as a recorded signal, so that a saved trial can be played as if it came from a board.
/// The errors are those of the reader of trial files.
Result<std::unique_ptr<RecordedSignal>> openLmbSignal(const std::filesystem::path& path);

} // namespace tavex2
