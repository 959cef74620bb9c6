#pragma once

#include "platform/AtomicFile.h"

#include <cstdint>
#include <system_error>
#include <utility>

namespace tavex2 {

/// The operating system's part of AtomicFile: a file under a temporary name beside the one that it is to have. Goes
/// away with the object unless it was kept.
class PendingFile {
  public:
    /// Errors as writeError().
    static Result<PendingFile> open(const std::filesystem::path& target, IfExists ifExists);

    PendingFile(PendingFile&& other) noexcept
        : m_target(std::move(other.m_target)), m_temporary(std::exchange(other.m_temporary, {})),
          m_ifExists(other.m_ifExists), m_file(std::exchange(other.m_file, closed)), m_waiting(other.m_waiting) {}
    PendingFile& operator=(PendingFile&&) = delete;
    ~PendingFile();

    /// The name that it is to have, with links followed.
    const std::filesystem::path& target() const { return m_target; }

    /// Hands bytes to the system, however many pieces that takes.
    std::error_code put(std::span<const std::byte> bytes);

    /// Brings the file safely to the disk and gives it its name. Call once, last.
    std::error_code keep();

  private:
    static constexpr std::intptr_t closed = -1;

    PendingFile(std::filesystem::path target, IfExists ifExists) : m_target(std::move(target)), m_ifExists(ifExists) {}
    std::error_code openTemporary();
    std::error_code closeFile();
    std::error_code moveIntoPlace();

    std::filesystem::path m_target;
    std::filesystem::path m_temporary; ///< empty when there is none (any more)
    IfExists m_ifExists;
    std::intptr_t m_file = closed; ///< the system's number of the open file
    std::int64_t m_waiting = 0;    ///< bytes written since the disk was last told to start
};

} // namespace tavex2
