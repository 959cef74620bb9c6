#include "platform/AtomicFile.h"

#include "base/FileErrors.h"
#include "base/PathText.h"
#include "platform/InputFile.h"
#include "platform/PendingFile.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tavex2 {

namespace {

constexpr std::size_t bufferBytes = std::size_t{64} * 1024;

/// Takes a number off the front of a text.
std::optional<int> takeNumber(std::string_view& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < 0) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

/// The process that a hidden file's name tells; no value for a name of another kind.
std::optional<int> writerOf(const std::string& name) {
    std::string_view rest = name;
    if (!rest.starts_with(PendingFile::temporaryPrefix)) return std::nullopt;
    rest.remove_prefix(PendingFile::temporaryPrefix.size());
    const std::optional<int> process = takeNumber(rest);
    if (!process || *process == 0 || !rest.starts_with('-')) return std::nullopt;
    rest.remove_prefix(1);
    return takeNumber(rest) && rest.empty() ? process : std::nullopt;
}

} // namespace

struct AtomicFile::Pending {
    PendingFile file;
    IfExists ifExists;
    Result<void> outcome;   // the first error stays
    std::uint64_t size = 0; // of what has been written
    std::vector<std::byte> buffer;

    void put(std::span<const std::byte> bytes) { note(file.put(bytes)); }

    void flush() {
        put(buffer);
        buffer.clear();
    }

    /// Copies what the old file has beyond the new one's size.
    Result<void> copyTail() {
        Result<InputFile> old = openForReading(file.target());
        if (!old) return old.error().kind == ErrorKind::NotFound ? Result<void>() : old.error();
        std::istream& in = old.value().stream;
        in.seekg(static_cast<std::streamoff>(size));
        std::vector<std::byte> piece(bufferBytes);
        for (std::uint64_t rest = old.value().bytes - std::min(size, old.value().bytes); outcome && rest > 0;) {
            const auto now = static_cast<std::size_t>(std::min<std::uint64_t>(rest, piece.size()));
            if (!in.read(reinterpret_cast<char*>(piece.data()), static_cast<std::streamsize>(now)))
                return readError(file.target(), std::make_error_code(std::errc::io_error));
            put(std::span(piece).first(now));
            rest -= now;
        }
        return outcome;
    }

    void note(std::error_code error) {
        if (error && outcome) outcome = writeError(file.target(), error);
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
    auto pending = std::make_unique<Pending>(Pending{std::move(file).value(), ifExists, {}, 0, {}});
    pending->buffer.reserve(bufferBytes);
    return AtomicFile(std::move(pending));
}

Result<void> AtomicFile::write(std::span<const std::byte> bytes) {
    Pending& pending = *m_pending;
    if (pending.outcome && pending.buffer.size() + bytes.size() > bufferBytes) pending.flush();
    if (!pending.outcome) return pending.outcome;
    if (bytes.size() >= bufferBytes)
        pending.put(bytes);
    else
        pending.buffer.insert(pending.buffer.end(), bytes.begin(), bytes.end());
    pending.size += bytes.size();
    return pending.outcome;
}

Result<void> AtomicFile::commit() {
    Pending& pending = *m_pending;
    if (pending.outcome) pending.flush();
    if (pending.outcome && pending.ifExists == IfExists::KeepTail) pending.outcome = pending.copyTail();
    if (pending.outcome) pending.note(pending.file.keep());
    return pending.outcome;
}

Result<void> checkWritable(const std::filesystem::path& folder) {
    if (const std::error_code error = PendingFile::tryFolder(folder)) return folderError(folder, error);
    return {};
}

void removeAbandonedFiles(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
        if (const std::optional<int> process = writerOf(pathText(entry->path().filename())))
            PendingFile::removeIfAbandoned(entry->path(), *process);
}

} // namespace tavex2
