#include "platform/PendingFile.h"

#include "base/FileErrors.h"
#include "base/PathText.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

/// How much is written before the disk is told to start on it: measured, this halves the time of saving a long trial.
constexpr std::int64_t flushAheadBytes = std::int64_t{2} * 1024 * 1024;

std::error_code systemError(int number) {
    return {number, std::generic_category()};
}

/// The error of a call that failed just now.
std::error_code lastError() {
    return systemError(errno);
}

fs::path folderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

/// Where a chain of symbolic links ends; the last link's target need not exist.
Result<fs::path> linkTarget(fs::path file) {
    constexpr int longestChain = 40;
    std::error_code error;
    for (int i = 0; i < longestChain; ++i) {
        if (!fs::is_symlink(fs::symlink_status(file, error))) return file;
        const fs::path target = fs::read_symlink(file, error);
        if (error) return writeError(file, error);
        file = folderOf(file) / target;
    }
    return writeError(file, systemError(ELOOP));
}

/// Checks the file that has the target's name now; `old` gets its status when there is one that may be replaced.
Result<bool> mayReplace(const fs::path& file, IfExists ifExists, struct stat& old) {
    if (::lstat(file.c_str(), &old) != 0) {
        if (errno != ENOENT) return writeError(file, lastError());
        return false;
    }
    if (S_ISDIR(old.st_mode)) return writeError(file, systemError(EISDIR));
    if (ifExists == IfExists::Refuse) return writeError(file, systemError(EEXIST));
    if (!S_ISREG(old.st_mode))
        return Error{ErrorKind::WriteFailed, pathText(file) + " is not an ordinary file. Choose another name."};
    if (::access(file.c_str(), W_OK) != 0) return writeError(file, lastError());
    return true;
}

/// Gives a file its final name unless that name is taken.
std::error_code renameUnlessTaken(const char* from, const char* to) {
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) return {};
    if (errno != EINVAL && errno != ENOSYS) return lastError(); // these two: the file system does not know the flag
#endif
    if (::link(from, to) != 0) return lastError();
    ::unlink(from);
    return {};
}

/// Makes a new name in a folder survive a power cut. The file is complete and in its place by now, so a file system
/// that cannot do this has not failed the save.
void flushFolder(const fs::path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

int descriptorOf(std::intptr_t file) {
    return static_cast<int>(file);
}

/// Lets the disk start on what has been written so far, so that little is left to wait for at the end. A mere hint:
/// should it fail, so will the flush that counts.
void startFlushing([[maybe_unused]] int descriptor) {
#ifdef SYNC_FILE_RANGE_WRITE
    ::sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
#endif
}

} // namespace

PendingFile::~PendingFile() {
    if (m_file != closed) ::close(descriptorOf(m_file));
    if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

Result<PendingFile> PendingFile::open(const fs::path& target, IfExists ifExists) {
    fs::path end = target;
    if (ifExists == IfExists::Replace) {
        Result<fs::path> followed = linkTarget(target);
        if (!followed) return followed.error();
        end = std::move(followed).value();
    }
    struct stat old {};
    const Result<bool> replaces = mayReplace(end, ifExists, old);
    if (!replaces) return replaces.error();

    PendingFile file(std::move(end), ifExists);
    if (const std::error_code error = file.openTemporary()) return writeError(file.m_target, error);
    if (replaces.value()) {
        const int descriptor = descriptorOf(file.m_file);
        // Only a privileged user may pass a file on to its old owner; for others the new file is simply theirs.
        [[maybe_unused]] const int passedOn = ::fchown(descriptor, old.st_uid, old.st_gid);
        if (::fchmod(descriptor, old.st_mode & 07777) != 0) return writeError(file.m_target, lastError());
    }
    return file;
}

/// Opens a file of a name that nobody uses, with the permissions of any new file of this user.
std::error_code PendingFile::openTemporary() {
    for (int number = 0;; ++number) {
        m_temporary = folderOf(m_target) / (".tavex2-" + std::to_string(::getpid()) + "-" + std::to_string(number));
        m_file = ::open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_file != closed) return {};
        if (errno != EEXIST) {
            m_temporary.clear();
            return lastError();
        }
    }
}

std::error_code PendingFile::put(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptorOf(m_file), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return written < 0 ? lastError() : systemError(EIO);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
        m_waiting += written;
    }
    if (m_waiting >= flushAheadBytes) {
        startFlushing(descriptorOf(m_file));
        m_waiting = 0;
    }
    return {};
}

std::error_code PendingFile::closeFile() {
    const int result = ::close(descriptorOf(std::exchange(m_file, closed)));
    return result == 0 || errno == EINTR ? std::error_code() : lastError();
}

std::error_code PendingFile::moveIntoPlace() {
    std::error_code error;
    if (m_ifExists == IfExists::Refuse)
        error = renameUnlessTaken(m_temporary.c_str(), m_target.c_str());
    else if (std::rename(m_temporary.c_str(), m_target.c_str()) != 0)
        error = lastError();
    if (!error) m_temporary.clear();
    return error;
}

std::error_code PendingFile::keep() {
    if (::fsync(descriptorOf(m_file)) != 0) return lastError();
    if (const std::error_code error = closeFile()) return error;
    if (const std::error_code error = moveIntoPlace()) return error;
    flushFolder(folderOf(m_target));
    return {};
}

} // namespace tavex2
