#pragma once

#include "acquisition/records/Trial.h"
#include "base/Result.h"
#include "files/FileProgress.h"
#include "platform/AtomicFile.h"
#include "platform/LocalTime.h"

#include <filesystem>
#include <string>

namespace tavex2 {

// The FileIO module: the writers of trial files. On the thread that owns the program's state.

/// How a file is written.
struct WriteOptions {
    IfExists ifExists = IfExists::Replace;
    FileProgress progress{}; ///< lets the window breathe, shows progress, cancels
};

/// The title of a trial file: program, trial number, date and time.
std::string lmbTitle(int trialNumber, const LocalTime& now);

/// Writes a trial as a binary trial file (layout in LmbLayout.h), as a whole or not at all. Channels and samples are
/// those of its array (rank 1 or 2). Samples become float32 on their way to the disk; no second copy of the trial is
/// made. Gives the header that was written: the trial's, with this title and defaults for labels and units never set.
/// Errors: InvalidValue (no samples, no rate, too large for the format), NotFound, AlreadyExists, WriteFailed,
/// Cancelled; nothing has changed on the disk then.
Result<LmbHeader> WriteLmb(const std::filesystem::path& path, const Trial& trial, const std::string& title,
                           const WriteOptions& options = {});

/// A trial file that was written.
struct WrittenLmb {
    std::filesystem::path path;
    LmbHeader header;
};

/// The same under the trial's name + ".lmb" in `folder`, or the next name that is free there (see freeName); never
/// replaces a file.
Result<WrittenLmb> WriteLmbToFreeName(const std::filesystem::path& folder, const Trial& trial, const std::string& title,
                                      const FileProgress& progress = {});

} // namespace tavex2
