#pragma once

#include "acquisition/records/LmbHeader.h"
#include "base/Result.h"
#include "base/TrialArray.h"
#include "files/FileProgress.h"

#include <cstdint>
#include <filesystem>
#include <istream>
#include <string>

namespace tavex2 {

// The Import module: the reader of binary trial files (layout in LmbLayout.h). It fills fresh records, touches no
// shared state, shows nothing and asks nothing; what is done with the records is the caller's affair. Any thread.

/// What a trial file holds.
struct LmbFile {
    bool identified = true;  ///< it begins with its identification text
    int versionMajor = 0;    ///< 2 of version 2.00
    double versionMinor = 0; ///< its first decimal, as .5 of version 2.50
    LmbHeader header;
    LmbInfoA infoA{};
    LmbInfoB infoB{};
    TrialComments comments{};
    TrialArray samples; ///< volts, float32, rank 2, at least one channel and one sample
};

/// Where a trial file begins.
enum class LmbStart {
    Identification, ///< with its identification text, as every file that this program writes
    Header,         ///< with the header; the version counts as 2.0
};

/// Whether a file can be read and begins with something else than a trial file's identification.
bool isForeign(const std::filesystem::path& path);

/// Reads a trial file. Every count is checked against the file's size before memory is taken, so a damaged file costs
/// neither time nor memory; bytes after the last channel's block are ignored.
///
/// Errors, each saying what was found: NotFound; ReadFailed (a folder, a device, no permission, the disk); BadFormat
/// (empty, of another kind, cut short, impossible counts or rate); OutOfMemory; Cancelled.
Result<LmbFile> readLmbFile(const std::filesystem::path& path, const FileProgress& progress = {},
                            LmbStart start = LmbStart::Identification);

/// The same, but a file without the identification is read from its first byte. One that is no trial file that way
/// either gets the error of the first try.
Result<LmbFile> readLmbOfAnyKind(const std::filesystem::path& path, const FileProgress& progress = {});

/// The same from a stream at its start that holds `bytes` bytes; `name` stands for the file in messages.
Result<LmbFile> readLmb(std::istream& in, std::uint64_t bytes, const std::string& name,
                        const FileProgress& progress = {}, LmbStart start = LmbStart::Identification);

} // namespace tavex2
