#pragma once

#include "acquisition/records/Trial.h"
#include "base/Result.h"
#include "files/FileIO.h"
#include "files/FileProgress.h"

#include <cstdint>
#include <filesystem>
#include <istream>
#include <string>

namespace tavex2 {

// The stimulus program's file (.plv), little-endian without padding:
//   "PLV", version (int16, 256)
//   sampling settings, 107 bytes (acquisition/records/SamplingBlock.h)
//   type of the elements (0x2000 + 4 for float32, + 5 for float64; + 2 and + 3 for int16 and int32 are read too)
//   number of dimensions: 1 (samples) or 2 (channels, samples)
//   for each dimension: number of elements and lower bound, int32 each
//   the elements, channel after channel

/// What a stimulus file holds.
struct StimulusFile {
    SamplingSettings sampling;
    TrialArray samples; ///< volts; rank and element type as in the file, whole numbers as float64
};

/// Writes a trial and its sampling settings, as a whole or not at all. When a file is replaced, what it had beyond the
/// new data stays behind them, where readers ignore it. Errors: InvalidValue for a trial without samples, those of
/// AtomicFile, Cancelled.
Result<void> WritePlv(const std::filesystem::path& path, const Trial& trial, const WriteOptions& options = {});

/// Reads a stimulus file. Counts are checked against the file's size before memory is taken; nothing checks settings
/// and data against each other. Errors: BadFormat for a file of another kind, WrongVersion for a newer one, ReadFailed
/// for anything else that goes wrong, OutOfMemory, Cancelled.
Result<StimulusFile> readPlvFile(const std::filesystem::path& path, const FileProgress& progress = {});
/// The same from a stream at its start that holds `bytes` bytes; `name` stands for the file in messages.
Result<StimulusFile> readPlv(std::istream& in, std::uint64_t bytes, const std::string& name,
                             const FileProgress& progress = {});

} // namespace tavex2
