#pragma once

#include "base/Result.h"
#include "platform/AtomicFile.h"

#include <filesystem>
#include <string>

namespace tavex2 {

/// The stimulus tone's file name, beside the program or in the user's data folder.
inline constexpr const char* toneFileName = "tone.wav";

/// The bytes of a tone: RIFF/WAVE, 8-bit mono PCM at 11025 samples a second, a sine of amplitude 64 around 128. The
/// duration is kept between 0 and an hour.
std::string toneBytes(double frequencyHz, double durationSeconds);

/// Writes the stimulus tone, as a whole or not at all. An older, longer file keeps its tail, which the header's sizes
/// leave out. `frequencyHz` and `durationSeconds` are those of the settings. Errors: those of AtomicFile.
Result<void> WriteTone(const std::filesystem::path& path, double frequencyHz, double durationSeconds,
                       IfExists ifExists = IfExists::KeepTail);

} // namespace tavex2
