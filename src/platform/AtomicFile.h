#pragma once

#include "base/Result.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>

namespace tavex2 {

/// What is done when the name to write to is taken.
enum class IfExists {
    Replace, ///< the old file is replaced, keeping its permissions
    Refuse,  ///< error AlreadyExists; the old file is never touched, not even if it appears while we write
};

/// Writes a file as a whole or not at all.
///
/// The bytes go into a hidden temporary file beside the target; commit() brings them safely to the disk and gives the
/// file its name. Until then, and after any failure, an old file of that name stays as it was, and an object that goes
/// away without commit() leaves nothing behind. Used by the file writers, from one thread at a time.
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

} // namespace tavex2
