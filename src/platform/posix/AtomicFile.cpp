#include "platform/AtomicFile.h"

#include "base/FileErrors.h"
#include "base/PathText.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t bufferBytes = std::size_t{64} * 1024;

/// How much is written before the disk is told to start on it: measured, this halves the time of saving a long trial.
constexpr std::int64_t flushAheadBytes = std::int64_t{2} * 1024 * 1024;

std::error_code systemError(int number) {
    return {number, std::generic_category()};
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
        if (errno != ENOENT) return writeError(file, systemError(errno));
        return false;
    }
    if (S_ISDIR(old.st_mode)) return writeError(file, systemError(EISDIR));
    if (ifExists == IfExists::Refuse) return writeError(file, systemError(EEXIST));
    if (!S_ISREG(old.st_mode))
        return Error{ErrorKind::WriteFailed, pathText(file) + " is not an ordinary file. Choose another name."};
    if (::access(file.c_str(), W_OK) != 0) return writeError(file, systemError(errno));
    return true;
}

/// Gives a file its final name unless that name is taken. Returns 0 or the error number.
int renameUnlessTaken(const char* from, const char* to) {
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno; // these two: the file system does not know the flag
#endif
    if (::link(from, to) != 0) return errno;
    ::unlink(from);
    return 0;
}

/// Makes a new name in a folder survive a power cut. The file is complete and in its place by now, so a file system
/// that cannot do this has not failed the save.
void flushFolder(const fs::path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

} // namespace

struct AtomicFile::Pending {
    fs::path target;    // links followed
    fs::path temporary; // empty when there is none (any more)
    IfExists ifExists = IfExists::Replace;
    int descriptor = -1;
    int failure = 0; // error number of the first call that failed
    std::vector<std::byte> buffer;
    std::int64_t waiting = 0; // bytes written since the disk was last told to start

    Pending() = default;
    Pending(const Pending&) = delete;
    Pending& operator=(const Pending&) = delete;
    ~Pending() {
        if (descriptor >= 0) ::close(descriptor);
        if (!temporary.empty()) ::unlink(temporary.c_str());
    }

    /// Opens a file of a name that nobody uses, with the permissions of any new file of this user.
    int openTemporary() {
        for (int number = 0;; ++number) {
            temporary = folderOf(target) / (".tavex2-" + std::to_string(::getpid()) + "-" + std::to_string(number));
            descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (descriptor >= 0) return 0;
            if (errno != EEXIST) {
                temporary.clear();
                return errno;
            }
        }
    }

    /// Hands bytes to the system, however many pieces that takes.
    int put(std::span<const std::byte> bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return written < 0 ? errno : EIO;
            bytes = bytes.subspan(static_cast<std::size_t>(written));
            waiting += written;
        }
        if (waiting >= flushAheadBytes) startFlushing();
        return 0;
    }

    /// Lets the disk start on what has been written so far, so that little is left to wait for at the end. A mere hint:
    /// should it fail, so will the flush that counts.
    void startFlushing() {
#ifdef SYNC_FILE_RANGE_WRITE
        ::sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
#endif
        waiting = 0;
    }

    int flush() {
        const int error = put(buffer);
        buffer.clear();
        return error;
    }

    int closeFile() {
        const int closed = ::close(descriptor);
        descriptor = -1;
        return closed == 0 || errno == EINTR ? 0 : errno;
    }

    int moveIntoPlace() {
        const int error = ifExists == IfExists::Refuse ? renameUnlessTaken(temporary.c_str(), target.c_str())
                          : std::rename(temporary.c_str(), target.c_str()) == 0 ? 0
                                                                                : errno;
        if (error == 0) temporary.clear();
        return error;
    }

    Result<void> outcome() const {
        if (failure != 0) return writeError(target, systemError(failure));
        return {};
    }
};

AtomicFile::AtomicFile(std::unique_ptr<Pending> pending) : m_pending(std::move(pending)) {}
AtomicFile::AtomicFile(AtomicFile&&) noexcept = default;
AtomicFile& AtomicFile::operator=(AtomicFile&&) noexcept = default;
AtomicFile::~AtomicFile() = default;

Result<AtomicFile> AtomicFile::create(const fs::path& target, IfExists ifExists) {
    if (!target.has_filename()) return Error{ErrorKind::InvalidValue, "A file needs a name. Type one."};

    auto pending = std::make_unique<Pending>();
    pending->target = target;
    pending->ifExists = ifExists;
    if (ifExists == IfExists::Replace) {
        Result<fs::path> end = linkTarget(target);
        if (!end) return end.error();
        pending->target = std::move(end).value();
    }

    struct stat old {};
    const Result<bool> replaces = mayReplace(pending->target, ifExists, old);
    if (!replaces) return replaces.error();
    if (const int error = pending->openTemporary(); error != 0) return writeError(pending->target, systemError(error));
    if (replaces.value()) {
        // Only a privileged user may pass a file on to its old owner; for others the new file is simply theirs.
        [[maybe_unused]] const int passedOn = ::fchown(pending->descriptor, old.st_uid, old.st_gid);
        if (::fchmod(pending->descriptor, old.st_mode & 07777) != 0)
            return writeError(pending->target, systemError(errno));
    }
    pending->buffer.reserve(bufferBytes);
    return AtomicFile(std::move(pending));
}

Result<void> AtomicFile::write(std::span<const std::byte> bytes) {
    Pending& file = *m_pending;
    if (file.failure == 0 && file.buffer.size() + bytes.size() > bufferBytes) file.failure = file.flush();
    if (file.failure != 0) return file.outcome();
    if (bytes.size() >= bufferBytes)
        file.failure = file.put(bytes);
    else
        file.buffer.insert(file.buffer.end(), bytes.begin(), bytes.end());
    return file.outcome();
}

Result<void> AtomicFile::commit() {
    Pending& file = *m_pending;
    if (file.failure == 0) file.failure = file.flush();
    if (file.failure == 0 && ::fsync(file.descriptor) != 0) file.failure = errno;
    if (file.failure == 0) file.failure = file.closeFile();
    if (file.failure == 0) file.failure = file.moveIntoPlace();
    if (file.failure == 0) flushFolder(folderOf(file.target));
    return file.outcome();
}

} // namespace tavex2
