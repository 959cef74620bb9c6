#include "files/Import.h"

#include "base/Decimal.h"
#include "base/LittleEndian.h"
#include "base/PathText.h"
#include "files/LmbLayout.h"
#include "platform/InputFile.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <span>
#include <string_view>
#include <utility>

namespace tavex2 {

namespace {

/// Fills `to` from the stream; false when it ends or fails before that.
bool fill(std::istream& in, std::span<std::byte> to) {
    const auto wanted = static_cast<std::streamsize>(to.size());
    return in.read(reinterpret_cast<char*>(to.data()), wanted).gcount() == wanted;
}

Error badFormat(const std::string& name, const std::string& what) {
    return {ErrorKind::BadFormat, name + " " + what};
}

Error endedEarly(const std::string& name) {
    return {ErrorKind::ReadFailed, name + " could not be read to its end. Check the disk and that no other program is "
                                          "changing the file."};
}

/// The number that a piece of text starts with; 0 when it starts with none.
double numberAt(std::string_view text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    return value;
}

/// Takes the file's kind and version from its first bytes.
Result<void> readIdentification(std::istream& in, std::uint64_t bytes, const std::string& name, LmbFile& file) {
    constexpr std::size_t majorAt = 30;
    constexpr std::size_t minorAt = 31;
    if (bytes == 0) return badFormat(name, "is empty. Choose a trial file (.lmb).");
    std::array<char, lmbIdentificationBytes> text{};
    const std::size_t there = bytes < text.size() ? static_cast<std::size_t>(bytes) : text.size();
    if (!fill(in, std::as_writable_bytes(std::span(text).first(there)))) return endedEarly(name);
    const std::string_view identification(text.data(), text.size());
    if (!identification.starts_with(lmbSignature))
        return badFormat(name, "is not a Lumidor2 binary file (.LMB) or is damaged: it does not start with \"" +
                                   std::string(lmbSignature) + "\".");
    const double major = numberAt(identification.substr(majorAt, 1));
    file.versionMajor = static_cast<int>(major);
    file.versionMinor = numberAt(identification.substr(minorAt, 2));
    return {};
}

/// Checks the header's numbers against each other and the file's size (as if it had an identification) before anything
/// is built on them.
Result<void> checkHeader(const LmbHeader& header, std::uint64_t bytes, const std::string& name) {
    const Result<std::uint64_t> needed = lmbFileBytes(header.NumChannels, header.NumSamples);
    if (!needed)
        return badFormat(name, "is damaged: it claims " + std::to_string(header.NumChannels) + " channels of " +
                                   std::to_string(header.NumSamples) + " samples.");
    if (bytes < needed.value())
        return badFormat(name, "is cut short: " + std::to_string(header.NumChannels) + " channels of " +
                                   std::to_string(header.NumSamples) + " samples take " +
                                   std::to_string(needed.value()) + " bytes, but it has " + std::to_string(bytes) +
                                   ".");
    if (!(header.Rate > 0 && header.Rate <= std::numeric_limits<std::int32_t>::max()))
        return badFormat(name, "is damaged: its sampling rate is " + plainNumber(header.Rate) + " Hz.");
    if (header.Rate <= 0.5) // a whole number of hertz is all that the settings and the other formats hold
        return badFormat(name, "was taken at " + plainNumber(header.Rate) +
                                   " Hz. Only trials of more than 0.5 Hz can be opened, because rates are rounded to "
                                   "whole numbers.");
    if (!(header.Duration >= 0 && std::isfinite(header.Duration)))
        return badFormat(name, "is damaged: its duration is " + plainNumber(header.Duration) + " s.");
    return {};
}

/// Reads the channel blocks; the stream stands behind the time block.
Result<TrialArray> readChannels(std::istream& in, const LmbHeader& header, const std::string& name,
                                const FileProgress& progress) {
    Result<TrialArray> samples = TrialArray::allocate(ElementType::Float32, 2, header.NumChannels, header.NumSamples);
    if (!samples) return samples;
    SampleProgress read(progress, std::int64_t{header.NumChannels} * header.NumSamples);
    for (int channel = 0; channel < header.NumChannels; ++channel) {
        const std::span<float> row = samples.value().floats(channel);
        for (std::span<float> rest = row; !rest.empty();) {
            const std::span<float> piece = rest.first(std::min(rest.size(), samplesOfAPiece));
            if (!fill(in, std::as_writable_bytes(piece))) return endedEarly(name);
            if (!read.advance(piece.size())) return Error{ErrorKind::Cancelled, "Opening " + name + " was cancelled."};
            rest = rest.subspan(piece.size());
        }
        if constexpr (std::endian::native == std::endian::big)
            for (float& each : row)
                each = fromLittleEndian<float>(std::bit_cast<std::array<std::byte, 4>>(each));
    }
    return samples;
}

} // namespace

bool isForeign(const std::filesystem::path& path) {
    Result<InputFile> file = openForReading(path);
    if (!file) return false;
    std::string first(lmbSignature.size(), '\0');
    file.value().stream.read(first.data(), static_cast<std::streamsize>(first.size()));
    return first != lmbSignature;
}

Result<LmbFile> readLmb(std::istream& in, std::uint64_t bytes, const std::string& name, const FileProgress& progress,
                        LmbStart start) {
    LmbFile file;
    file.versionMajor = 2;
    file.identified = start == LmbStart::Identification;
    if (!file.identified)
        bytes += lmbIdentificationBytes;
    else if (auto read = readIdentification(in, bytes, name, file); !read)
        return read.error();
    if (bytes < lmbIdentificationBytes + lmbRecordBytes)
        return badFormat(name,
                         "is cut short: it has " + std::to_string(bytes) + " bytes and ends before the samples start.");

    std::array<std::byte, lmbRecordBytes> recordBytes;
    if (!fill(in, recordBytes)) return endedEarly(name);
    LmbRecords records = decodeLmbRecords(recordBytes);
    if (auto checked = checkHeader(records.header, bytes, name); !checked) return checked.error();

    // The times follow from the rate; their block is passed over.
    if (!in.seekg(std::streamoff{records.header.NumSamples} * std::streamoff{sizeof(float)}, std::ios::cur))
        return endedEarly(name);
    Result<TrialArray> samples = readChannels(in, records.header, name, progress);
    if (!samples) return samples.error();

    file.header = records.header;
    file.infoA = records.infoA;
    file.infoB = records.infoB;
    file.comments = records.comments;
    file.samples = std::move(samples).value();
    return file;
}

Result<LmbFile> readLmbFile(const std::filesystem::path& path, const FileProgress& progress, LmbStart start) {
    Result<InputFile> file = openForReading(path);
    if (!file) return file.error();
    return readLmb(file.value().stream, file.value().bytes, pathText(path), progress, start);
}

Result<LmbFile> readLmbOfAnyKind(const std::filesystem::path& path, const FileProgress& progress) {
    Result<LmbFile> read = readLmbFile(path, progress);
    if (read || !isForeign(path)) return read;
    Result<LmbFile> readWhole = readLmbFile(path, progress, LmbStart::Header);
    return readWhole ? std::move(readWhole) : std::move(read);
}

} // namespace tavex2
