#pragma once

#include "platform/devices/RecordedSignal.h"

#include <filesystem>
#include <memory>

namespace tavex2 {

/// Opens a trial file as a recorded signal, so that a saved trial can be played as if it came from a board.
/// One without the identification is read from its first byte, which its name tells. The errors are those of the reader
/// of trial files, and InvalidValue for a rate that is no whole number.
Result<std::unique_ptr<RecordedSignal>> openLmbSignal(const std::filesystem::path& path);

} // namespace tavex2
