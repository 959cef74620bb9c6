#include "platform/AtomicFile.h"

#include "base/FileErrors.h"
#include "platform/PendingFile.h"

#include <utility>
#include <vector>

namespace tavex2 {

namespace {

constexpr std::size_t bufferBytes = std::size_t{64} * 1024;

} // namespace

struct AtomicFile::Pending {
    PendingFile file;
    std::error_code failure; // of the first call that failed
    std::vector<std::byte> buffer;

    std::error_code flush() {
        const std::error_code error = file.put(buffer);
        buffer.clear();
        return error;
    }

    Result<void> outcome() const {
        if (failure) return writeError(file.target(), failure);
        return {};
    }
};

AtomicFile::AtomicFile(std::unique_ptr<Pending> pending) : m_pending(std::move(pending)) {}
AtomicFile::AtomicFile(AtomicFile&&) noexcept = default;
AtomicFile& AtomicFile::operator=(AtomicFile&&) noexcept = default;
AtomicFile::~AtomicFile() = default;

Result<AtomicFile> AtomicFile::create(const std::filesystem::path& target, IfExists ifExists) {
    if (!target.has_filename()) return Error{ErrorKind::InvalidValue, "A file needs a name. Type one."};
    Result<PendingFile> file = PendingFile::open(target, ifExists);
    if (!file) return file.error();
    auto pending = std::make_unique<Pending>(Pending{std::move(file).value(), {}, {}});
    pending->buffer.reserve(bufferBytes);
    return AtomicFile(std::move(pending));
}

Result<void> AtomicFile::write(std::span<const std::byte> bytes) {
    Pending& pending = *m_pending;
    if (!pending.failure && pending.buffer.size() + bytes.size() > bufferBytes) pending.failure = pending.flush();
    if (pending.failure) return pending.outcome();
    if (bytes.size() >= bufferBytes)
        pending.failure = pending.file.put(bytes);
    else
        pending.buffer.insert(pending.buffer.end(), bytes.begin(), bytes.end());
    return pending.outcome();
}

Result<void> AtomicFile::commit() {
    Pending& pending = *m_pending;
    if (!pending.failure) pending.failure = pending.flush();
    if (!pending.failure) pending.failure = pending.file.keep();
    return pending.outcome();
}

} // namespace tavex2
