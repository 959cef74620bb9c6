#pragma once

#include "acquisition/records/AcqSettings.h"
#include "base/Result.h"

#include <filesystem>
#include <istream>
#include <string>

namespace tavex2 {

// The setup file (.set): the four groups of AcqSettings one after the other, field by field in the order of the record,
// little-endian without padding, header or terminator. Booleans are 16-bit, fixed texts have their full width, texts of
// variable length are an unsigned 16-bit count of bytes and that many bytes of Windows-1252.

/// The bytes of a setup file of version 1, whatever version the settings were read from. Texts beyond 65535 bytes are
/// cut; characters that Windows-1252 lacks become "?".
std::string encodeSetup(const AcqSettings& settings);

/// Reads settings field by field into `settings`; what was read before a failure stays there. Values are taken as they
/// are, whatever their ranges. Errors: WrongVersion when the version that the file holds is not 1, with the first
/// group read as far as it goes and nothing after it; BadFormat when the file ends too soon.
Result<void> decodeSetup(std::istream& in, AcqSettings& settings);

/// Writes a setup file, as a whole or not at all. The errors are those of AtomicFile.
Result<void> writeSetupFile(const std::filesystem::path& path, const AcqSettings& settings);

/// decodeSetup() of a file; also NotFound and ReadFailed, with nothing read.
Result<void> readSetupFile(const std::filesystem::path& path, AcqSettings& settings);

} // namespace tavex2
