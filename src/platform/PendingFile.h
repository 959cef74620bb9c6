#pragma once

#include "platform/AtomicFile.h"

#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

namespace tavex2 {

/// The operating system's part of AtomicFile: a file in the folder of the name that it is to have, without a name of
/// its own where the system and the disk can do that, else under a temporary one. Goes away with the object unless it
/// was kept, and is locked while it is open, so that nobody takes it for an abandoned one.
class PendingFile {
  public:
    /// What temporary names begin with; the process and a number follow, with a "-" between them.
    static constexpr std::string_view temporaryPrefix = ".tavex2-";

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

    /// Whether files can be made in a folder: makes one that nobody sees, or hardly.
    static std::error_code tryFolder(const std::filesystem::path& folder);

    /// Removes a file of a temporary name when the process that wrote it is gone.
    static void removeIfAbandoned(const std::filesystem::path& file, int process);

  private:
    static constexpr std::intptr_t closed = -1;

    PendingFile(std::filesystem::path target, IfExists ifExists) : m_target(std::move(target)), m_ifExists(ifExists) {}
    std::error_code openTemporary();
    std::filesystem::path temporaryName(int number) const;
    std::error_code giveName();
    std::error_code closeFile();
    std::error_code moveIntoPlace();

    std::filesystem::path m_target;
    std::filesystem::path m_temporary; ///< empty while there is none
    IfExists m_ifExists;
    std::intptr_t m_file = closed; ///< the system's number of the open file
    std::int64_t m_waiting = 0;    ///< bytes written since the disk was last told to start
};

} // namespace tavex2
