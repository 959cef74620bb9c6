#pragma once

#include "platform/devices/RecordedSignal.h"

#include <filesystem>
#include <memory>

namespace tavex2 {

/// Opens a sound file (WAVE, FLAC and whatever else the sound-file library reads) as a recorded signal. A full-scale
/// sample stands for 10 V: a 16-bit sample s is s / 32768 x 10 V.
/// Errors, each with the path and what to do: NotFound, ReadFailed (a folder, no permission), BadFormat (another kind
/// of file, or one without samples).
Result<std::unique_ptr<RecordedSignal>> openSndfileSignal(const std::filesystem::path& path);

} // namespace tavex2
