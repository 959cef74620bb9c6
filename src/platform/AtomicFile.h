#pragma once

#include "base/Result.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>

namespace tavex2 {

/// What is done when the name to write to is taken.
enum class IfExists {
    Replace,  ///< the old file is replaced, keeping its permissions
    KeepTail, ///< the same; what the old file had beyond the new bytes stays behind them
    Refuse,   ///< error AlreadyExists; the old file is never touched, not even if it appears while we write
};

/// Writes a file as a whole or not at all.
///
/// The bytes go into a file without a name, or a hidden one where the disk knows no such files, in the target's folder;
/// commit() brings them safely to the disk and gives the file its name. Until then, and after any failure, an old file
/// of that name stays as it was, and an object that goes away without commit() leaves nothing behind. Used by the file
/// writers, from one thread at a time.
///
/// A symbolic link is followed, so that the file it names is replaced and not the link. Only ordinary files are
/// replaced, and no write-protected ones. Sizes are 64-bit.
class AtomicFile {
  public:
    /// Opens a temporary file in the target's folder. Errors as writeError(); InvalidValue for an empty name.
    static Result<AtomicFile> create(const std::filesystem::path& target, IfExists ifExists = IfExists::Replace);

    AtomicFile(AtomicFile&&) noexcept;
    AtomicFile& operator=(AtomicFile&&) noexcept;
    ~AtomicFile();

    /// Appends bytes; small pieces are collected, large ones go to the system as they are. After an error every further
    /// call fails with that error.
    Result<void> write(std::span<const std::byte> bytes);

    /// Flushes to the disk and puts the file in its place. Call once, last.
    Result<void> commit();

  private:
    struct Pending;
    explicit AtomicFile(std::unique_ptr<Pending> pending);

    std::unique_ptr<Pending> m_pending;
};

/// Whether files can be made in a folder: tries it, and leaves nothing there. Errors as folderError().
Result<void> checkWritable(const std::filesystem::path& folder);

/// Removes from a folder what writers left there that were ended by force: their hidden files, once their process is
/// gone. Called at the start of the program for the folder that it is going to write to. Never fails.
void removeAbandonedFiles(const std::filesystem::path& folder);

} // namespace tavex2
