#include "platform/PendingFile.h"

#include "base/FileErrors.h"
#include "platform/windows/WindowsHeader.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

/// How much one call is given; larger pieces fail on some network folders.
constexpr std::size_t mostBytesAtOnce = std::size_t{16} * 1024 * 1024;

HANDLE handleOf(std::intptr_t file) {
    return reinterpret_cast<HANDLE>(file);
}

/// The longest name that disks take, in characters.
constexpr std::size_t longestName = 255;

/// The error of a call that failed just now, as POSIX systems name it where they know it.
std::error_code lastError() {
    const DWORD number = ::GetLastError();
    switch (number) {
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
        return std::make_error_code(std::errc::file_exists);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_FILE_NOT_FOUND:
        return std::make_error_code(std::errc::no_such_file_or_directory);
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return std::make_error_code(std::errc::permission_denied);
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return std::make_error_code(std::errc::no_space_on_device);
    case ERROR_WRITE_PROTECT:
        return std::make_error_code(std::errc::read_only_file_system);
    case ERROR_FILENAME_EXCED_RANGE:
        return std::make_error_code(std::errc::filename_too_long);
    default:
        return {static_cast<int>(number), std::system_category()};
    }
}

fs::path folderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

/// Whether a process is still there; one that may not be looked at is.
bool isRunning(DWORD process) {
    HANDLE handle = ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
    if (handle == nullptr) return ::GetLastError() == ERROR_ACCESS_DENIED;
    DWORD exitCode = 0;
    const bool running = ::GetExitCodeProcess(handle, &exitCode) == 0 || exitCode == STILL_ACTIVE;
    ::CloseHandle(handle);
    return running;
}

/// Checks the file that has the target's name now.
std::error_code mayReplace(const fs::path& file, IfExists ifExists) {
    if (file.filename().native().size() > longestName) return std::make_error_code(std::errc::filename_too_long);
    const DWORD attributes = ::GetFileAttributesW(file.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const std::error_code error = lastError();
        return error == std::errc::no_such_file_or_directory ? std::error_code() : error;
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return std::make_error_code(std::errc::is_a_directory);
    if (ifExists == IfExists::Refuse) return std::make_error_code(std::errc::file_exists);
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return std::make_error_code(std::errc::permission_denied);
    return {};
}

} // namespace

PendingFile::~PendingFile() {
    if (m_file != closed) ::CloseHandle(handleOf(m_file));
    if (!m_temporary.empty()) ::DeleteFileW(m_temporary.c_str());
}

Result<PendingFile> PendingFile::open(const fs::path& target, IfExists ifExists) {
    PendingFile file(target, ifExists);
    if (const std::error_code error = mayReplace(target, ifExists)) return writeError(target, error);
    if (const std::error_code error = file.openTemporary()) return writeError(target, error);
    return file;
}

fs::path PendingFile::temporaryName(int number) const {
    return folderOf(m_target) /
           (std::string(temporaryPrefix) + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(number));
}

/// Opens a hidden file of a name that nobody uses. Nobody else can open or remove it meanwhile.
std::error_code PendingFile::openTemporary() {
    const fs::path folder = folderOf(m_target);
    if (std::error_code ignored; fs::exists(folder, ignored) && !fs::is_directory(folder, ignored))
        return std::make_error_code(std::errc::not_a_directory);
    for (int number = 0;; ++number) {
        m_temporary = temporaryName(number);
        HANDLE file = ::CreateFileW(m_temporary.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
        m_file = reinterpret_cast<std::intptr_t>(file);
        if (m_file != closed) return {};
        const std::error_code error = lastError();
        if (error == std::errc::file_exists) continue;
        m_temporary.clear();
        return error;
    }
}

std::error_code PendingFile::put(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto piece = static_cast<DWORD>(std::min(bytes.size(), mostBytesAtOnce));
        if (::WriteFile(handleOf(m_file), bytes.data(), piece, &written, nullptr) == 0) return lastError();
        if (written == 0) return std::make_error_code(std::errc::io_error);
        bytes = bytes.subspan(written);
    }
    return {};
}

std::error_code PendingFile::closeFile() {
    return ::CloseHandle(handleOf(std::exchange(m_file, closed))) != 0 ? std::error_code() : lastError();
}

std::error_code PendingFile::moveIntoPlace() {
    const DWORD how = MOVEFILE_WRITE_THROUGH | (m_ifExists == IfExists::Refuse ? 0U : MOVEFILE_REPLACE_EXISTING);
    if (::MoveFileExW(m_temporary.c_str(), m_target.c_str(), how) == 0) return lastError();
    m_temporary.clear();
    return {};
}

std::error_code PendingFile::keep() {
    if (::FlushFileBuffers(handleOf(m_file)) == 0) return lastError();
    if (const std::error_code error = closeFile()) return error;
    return moveIntoPlace();
}

std::error_code PendingFile::tryFolder(const fs::path& folder) {
    PendingFile file(folder / "any", IfExists::Refuse);
    return file.openTemporary();
}

/// A process of another machine may write into a folder that both share; its file is open and cannot be removed.
void PendingFile::removeIfAbandoned(const fs::path& file, int process) {
    if (!isRunning(static_cast<DWORD>(process))) ::DeleteFileW(file.c_str());
}

} // namespace tavex2
