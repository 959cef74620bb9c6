#pragma once

#include "base/Result.h"

#include <filesystem>
#include <system_error>

namespace tavex2 {

/// The error for a file that the system refused to write, in plain words and with what to do about it. Kinds: NotFound
/// when its folder does not exist, AlreadyExists for std::errc::file_exists, else WriteFailed.
Error writeError(const std::filesystem::path& file, std::error_code reason);

/// The error for a folder in which the system refused to make a file, likewise.
Error folderError(const std::filesystem::path& folder, std::error_code reason);

/// The error for a file that the system refused to read, likewise. Kinds: NotFound, else ReadFailed.
Error readError(const std::filesystem::path& file, std::error_code reason);

} // namespace tavex2
