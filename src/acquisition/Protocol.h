#pragma once

#include "acquisition/OwnSettings.h"
#include "acquisition/records/AcqSettings.h"
#include "base/Result.h"

#include <filesystem>

namespace tavex2 {

// A protocol on the disk: a setup file, and beside NAME.set, where a setting of the program's own differs from its
// default, NAME.set.json. That is a JSON object with the settings that differ under their names, as true, false or
// numbers; the setup file knows nothing of it. Called on the user-interface thread.

/// The place of the own settings that belong to a setup file.
std::filesystem::path ownSettingsFile(const std::filesystem::path& setupFile);

/// Writes both files, each as a whole or not at all; where all own settings have their defaults, one that was there is
/// removed. Nothing is put in its place before both could be written. The errors are those of AtomicFile; WriteFailed
/// when the old own settings cannot be removed.
Result<void> writeProtocol(const std::filesystem::path& setupFile, const AcqSettings& settings, const OwnSettings& own);

/// Reads the own settings that belong to a setup file; without a file of them all have their defaults. An error says
/// what of the file could not be read: that has its default, everything else was taken. Errors: those of
/// openForReading(); BadFormat for a file that is no such object, a name that is not known and a value out of range.
Result<void> readOwnSettings(const std::filesystem::path& setupFile, const OwnSettings& own);

} // namespace tavex2
