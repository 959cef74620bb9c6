#include "platform/PendingFile.h"

#include "base/FileErrors.h"
#include "base/PathText.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
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

/// The name under which the system knows an open file of this process.
std::string pathOfOpen(std::intptr_t file) {
    return "/proc/self/fd/" + std::to_string(file);
}

/// Opens a file in a folder that has no name until it is linked; -1 where the system or the disk has no such files.
int openNameless([[maybe_unused]] const fs::path& folder) {
#ifdef O_TMPFILE
    const int descriptor = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    if (descriptor < 0 || ::access(pathOfOpen(descriptor).c_str(), F_OK) == 0) return descriptor;
    ::close(descriptor); // it could never be linked
#endif
    return -1;
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
    if (ifExists != IfExists::Refuse) {
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

fs::path PendingFile::temporaryName(int number) const {
    return folderOf(m_target) /
           (std::string(temporaryPrefix) + std::to_string(::getpid()) + "-" + std::to_string(number));
}

/// Opens a file with the permissions of any new file of this user: one without a name, or one of a name that nobody
/// uses.
std::error_code PendingFile::openTemporary() {
    m_file = openNameless(folderOf(m_target));
    for (int number = 0; m_file == closed; ++number) {
        m_temporary = temporaryName(number);
        m_file = ::open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_file == closed && errno != EEXIST) {
            m_temporary.clear();
            return lastError();
        }
    }
    ::flock(descriptorOf(m_file), LOCK_EX | LOCK_NB); // a disk without locks still has the process's number
    return {};
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

/// Gives a nameless file a name: at once the final one, or, where that is to be replaced, first a temporary one.
std::error_code PendingFile::giveName() {
    const std::string file = pathOfOpen(m_file);
    const auto link = [&file](const fs::path& name) {
        return ::linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0 ? std::error_code()
                                                                                                : lastError();
    };
    std::error_code error = link(m_target);
    if (error != std::errc::file_exists || m_ifExists == IfExists::Refuse) return error;
    for (int number = 0; error == std::errc::file_exists; ++number) {
        m_temporary = temporaryName(number);
        error = link(m_temporary);
    }
    if (error) m_temporary.clear();
    return error;
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
    if (m_temporary.empty())
        if (const std::error_code error = giveName()) return error;
    if (const std::error_code error = closeFile()) return error;
    if (!m_temporary.empty())
        if (const std::error_code error = moveIntoPlace()) return error;
    flushFolder(folderOf(m_target));
    return {};
}

std::error_code PendingFile::tryFolder(const fs::path& folder) {
    PendingFile file(folder / "any", IfExists::Refuse);
    return file.openTemporary();
}

/// A process of another machine may write into a folder that both share, so its lock is looked at too.
void PendingFile::removeIfAbandoned(const fs::path& file, int process) {
    if (::kill(process, 0) == 0 || errno != ESRCH) return;
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return;
    struct stat status {};
    const bool own = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
    const bool locked = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (own && !locked) ::unlink(file.c_str());
    ::close(descriptor);
}

} // namespace tavex2
