#pragma once

#include "acquisition/records/ProgramState.h"
#include "base/Result.h"
#include "files/FileProgress.h"
#include "platform/AtomicFile.h"
#include "platform/LocalTime.h"

#include <filesystem>
#include <optional>

namespace tavex2 {

// The FileIO module: the writers of trial files. On the thread that owns the program's state.

/// How a file is written.
struct WriteOptions {
    IfExists ifExists = IfExists::Replace;
    FileProgress progress{}; ///< lets the window breathe, shows progress, cancels
    std::optional<FixedText<100>> title =
        std::nullopt; ///< of a trial file that has one already, else a new one is made
};

/// Writes the current trial as a binary trial file (layout in LmbLayout.h), as a whole or not at all.
///
/// Channels and samples are those of the trial's array (rank 1 or 2), rate and duration those under which it was taken,
/// the title's trial number that of the settings, `now` the title's date and time. Samples become float32 on their way
/// to the disk; no second copy of the trial is made.
///
/// After success `state.header` is the header that was written, with defaults for labels and units never set, and
/// Unsaved is False. A failure changes nothing, neither in the state nor on the disk.
/// Errors: InvalidValue (no trial, too large for the format), NotFound, AlreadyExists, WriteFailed, Cancelled.
Result<void> WriteLmb(const std::filesystem::path& path, ProgramState& state, const LocalTime& now,
                      const WriteOptions& options = {});

/// The same under TrialName + ".lmb" in `folder`, or the next name that is free there (see freeName); never replaces a
/// file. Gives the path written.
Result<std::filesystem::path> WriteLmbToFreeName(const std::filesystem::path& folder, ProgramState& state,
                                                 const LocalTime& now, const FileProgress& progress = {});

} // namespace tavex2
