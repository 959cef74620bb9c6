#pragma once

#include "acquisition/records/ProgramState.h"
#include "base/Result.h"
#include "files/FileIO.h"

#include <filesystem>
#include <string>

namespace tavex2 {

// The text exports of a trial. Each writes the file as a whole or not at all and uses "." for decimals whatever the
// user's language. Texts are Windows-1252. Errors: InvalidValue for a trial without samples or rate, those of
// AtomicFile, Cancelled.

/// A table for spreadsheets, separated by tabs: five lines of head, then time (six decimals) and values (five
/// decimals). With one channel a row has no tab at its end.
Result<void> WriteTab(const std::filesystem::path& path, const Trial& trial, const WriteOptions& options = {});

/// A table for the sibling analysis program, in columns of ten characters: eight lines of head beginning with an
/// asterisk, then time and values (four decimals).
Result<void> WriteLma(const std::filesystem::path& path, const Trial& trial, const WriteOptions& options = {});

/// The same table of the overlay set's average; the third line of its head says so. Values are means of single
/// precision, summed up in the set's order. Channels, samples, rate and duration are those of the settings `current`,
/// which must lie within the overlays' arrays; the first lines name the current trial. Errors besides those above:
/// InvalidValue when the set is empty, for overlays of one channel, which have no second index, and for settings that
/// do not fit the overlays.
Result<void> WriteOverlayLma(const std::filesystem::path& path, const OverlaySet& overlays,
                             const SamplingSettings& current, const std::string& trialName,
                             const WriteOptions& options = {});

} // namespace tavex2
