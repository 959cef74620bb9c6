#include "files/StimulusFile.h"

#include "acquisition/records/SamplingBlock.h"
#include "base/LittleEndian.h"
#include "base/PathText.h"
#include "platform/InputFile.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace tavex2 {

namespace {

constexpr std::string_view magic = "PLV";
constexpr std::int16_t newestVersion = 256;

// Type codes of array elements.
constexpr std::uint16_t codeInt16 = 0x2002;
constexpr std::uint16_t codeInt32 = 0x2003;
constexpr std::uint16_t codeFloat32 = 0x2004;
constexpr std::uint16_t codeFloat64 = 0x2005;

constexpr std::uint64_t bytesBeforeDescriptors = 3 + 2 + samplingBlockBytes + 2 + 2;

/// A number from the stream; 0 when it has ended, which the stream then says.
template <class T>
T get(std::istream& in) {
    std::array<std::byte, sizeof(T)> bytes{};
    in.read(reinterpret_cast<char*>(bytes.data()), sizeof(T));
    return fromLittleEndian<T>(bytes);
}

Error damaged(const std::string& name, const std::string& what) {
    return {ErrorKind::ReadFailed, name + " is damaged: " + what};
}

std::uint64_t sizeOfElement(std::uint16_t code) {
    switch (code) {
    case codeInt16:
        return 2;
    case codeInt32:
    case codeFloat32:
        return 4;
    case codeFloat64:
        return 8;
    default:
        return 0;
    }
}

/// How the data block says that the elements lie.
struct Shape {
    std::uint16_t code = 0;
    int dimensions = 0;
    std::int64_t channels = 1;
    std::int64_t samples = 0;
};

Result<Shape> readShape(std::istream& in, std::uint64_t bytes, const std::string& name) {
    Shape shape;
    shape.code = get<std::uint16_t>(in);
    const auto dimensions = get<std::uint16_t>(in);
    if (!in || sizeOfElement(shape.code) == 0)
        return damaged(name, "its elements have the unknown type " + std::to_string(shape.code) + ".");
    if (dimensions != 1 && dimensions != 2)
        return damaged(name, "its data have " + std::to_string(dimensions) + " dimensions.");
    shape.dimensions = dimensions;
    if (dimensions == 2) {
        shape.channels = get<std::int32_t>(in);
        (void)get<std::int32_t>(in); // the lower bound, which may be any
    }
    shape.samples = get<std::int32_t>(in);
    (void)get<std::int32_t>(in);
    if (!in || shape.channels < 1 || shape.channels > mostChannels || shape.samples < 1)
        return damaged(name, "it claims " + std::to_string(shape.channels) + " channels of " +
                                 std::to_string(shape.samples) + " samples.");
    const std::uint64_t needed = bytesBeforeDescriptors + 8 * std::uint64_t{dimensions} +
                                 static_cast<std::uint64_t>(shape.channels) *
                                     static_cast<std::uint64_t>(shape.samples) * sizeOfElement(shape.code);
    if (bytes < needed)
        return damaged(name, "it has " + std::to_string(bytes) + " bytes instead of " + std::to_string(needed) + ".");
    return shape;
}

/// Reads a channel's elements of type `Stored` into a row of volts; False when the work is to end. The stream says when
/// it has ended.
template <class Stored, class Volts>
bool readRow(std::istream& in, std::span<Volts> row, SampleProgress& progress) {
    std::vector<std::array<std::byte, sizeof(Stored)>> piece(std::min(row.size(), samplesOfAPiece));
    while (!row.empty() && in) {
        const std::size_t count = std::min(row.size(), piece.size());
        in.read(reinterpret_cast<char*>(piece.data()), static_cast<std::streamsize>(count * sizeof(Stored)));
        std::transform(piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count), row.begin(),
                       [](const auto& bytes) { return static_cast<Volts>(fromLittleEndian<Stored>(bytes)); });
        row = row.subspan(count);
        if (!progress.advance(count)) return false;
    }
    return true;
}

bool readRow(std::istream& in, TrialArray& samples, int channel, std::uint16_t code, SampleProgress& progress) {
    switch (code) {
    case codeInt16:
        return readRow<std::int16_t>(in, samples.doubles(channel), progress);
    case codeInt32:
        return readRow<std::int32_t>(in, samples.doubles(channel), progress);
    case codeFloat32:
        return readRow<float>(in, samples.floats(channel), progress);
    default:
        return readRow<double>(in, samples.doubles(channel), progress);
    }
}

Result<TrialArray> readElements(std::istream& in, const Shape& shape, const std::string& name,
                                const FileProgress& tell) {
    SampleProgress progress(tell, shape.channels * shape.samples);
    const ElementType type = shape.code == codeFloat32 ? ElementType::Float32 : ElementType::Float64;
    Result<TrialArray> samples =
        TrialArray::allocate(type, shape.dimensions, static_cast<int>(shape.channels), shape.samples);
    if (!samples) return samples;
    for (int channel = 0; channel < samples.value().channels(); ++channel) {
        if (!readRow(in, samples.value(), channel, shape.code, progress))
            return Error{ErrorKind::Cancelled, "Opening " + name + " was cancelled."};
        if (!in) return damaged(name, "it ends in channel " + std::to_string(channel) + ".");
    }
    return samples;
}

/// Writes the parts of a file one after the other; after an error nothing more.
class Writer {
  public:
    explicit Writer(AtomicFile& file) : m_file(file) {}

    void put(std::span<const std::byte> bytes) {
        if (m_outcome) m_outcome = m_file.write(bytes);
    }
    template <Arithmetic T>
    void put(T value) {
        put(littleEndianBytes(value));
    }
    void end(const Error& why) { m_outcome = why; }

    const Result<void>& outcome() const { return m_outcome; }

  private:
    AtomicFile& m_file;
    Result<void> m_outcome;
};

template <class T>
void writeRow(Writer& writer, std::span<const T> row, SampleProgress& progress) {
    std::vector<std::array<std::byte, sizeof(T)>> piece;
    while (!row.empty() && writer.outcome()) {
        const auto now = row.first(std::min(row.size(), samplesOfAPiece));
        piece.resize(now.size());
        std::ranges::transform(now, piece.begin(), littleEndianBytes<T>);
        writer.put(std::as_bytes(std::span(piece)));
        if (!progress.advance(now.size()))
            writer.end({ErrorKind::Cancelled, "Saving was cancelled; no file was written."});
        row = row.subspan(now.size());
    }
}

void writeElements(Writer& writer, const TrialArray& trial, const FileProgress& tell) {
    SampleProgress progress(tell, trial.channels() * trial.samples());
    writer.put(trial.elementType() == ElementType::Float32 ? codeFloat32 : codeFloat64);
    writer.put(static_cast<std::uint16_t>(trial.rank()));
    if (trial.rank() == 2) {
        writer.put(std::int32_t{trial.channels()});
        writer.put(std::int32_t{0});
    }
    writer.put(static_cast<std::int32_t>(trial.samples()));
    writer.put(std::int32_t{0});
    for (int channel = 0; channel < trial.channels(); ++channel)
        trial.visitChannel(channel, [&](auto samples) { writeRow(writer, samples, progress); });
}

} // namespace

Result<void> WritePlv(const std::filesystem::path& path, const Trial& trial, const WriteOptions& options) {
    if (!trial.hasSamples()) return Error{ErrorKind::InvalidValue, "There is no trial to export."};
    const auto sampling = encodeSampling(trial.sampling);
    Result<AtomicFile> file =
        AtomicFile::create(path, options.ifExists == IfExists::Replace ? IfExists::KeepTail : options.ifExists);
    if (!file) return file.error();
    Writer writer(file.value());
    writer.put(std::as_bytes(std::span(magic)));
    writer.put(newestVersion);
    writer.put(std::as_bytes(std::span(sampling)));
    writeElements(writer, *trial.samples, options.progress);
    if (!writer.outcome()) return writer.outcome();
    if (auto committed = file.value().commit(); !committed) return committed;
    return {};
}

Result<StimulusFile> readPlv(std::istream& in, std::uint64_t bytes, const std::string& name,
                             const FileProgress& progress) {
    std::string first(magic.size(), '\0');
    in.read(first.data(), static_cast<std::streamsize>(first.size()));
    if (first != magic) return Error{ErrorKind::BadFormat, name + " is not a Pulvo file."};
    const auto version = get<std::int16_t>(in);
    if (version > newestVersion)
        return Error{ErrorKind::WrongVersion, name + " has the version " + std::to_string(version) + "."};
    std::array<std::byte, samplingBlockBytes> sampling{};
    in.read(reinterpret_cast<char*>(sampling.data()), static_cast<std::streamsize>(sampling.size()));
    if (!in) return damaged(name, "it ends before its data.");
    const Result<Shape> shape = readShape(in, bytes, name);
    if (!shape) return shape.error();
    Result<TrialArray> samples = readElements(in, shape.value(), name, progress);
    if (!samples) return samples.error();
    return StimulusFile{.sampling = decodeSampling(sampling), .samples = std::move(samples).value()};
}

Result<StimulusFile> readPlvFile(const std::filesystem::path& path, const FileProgress& progress) {
    Result<InputFile> file = openForReading(path);
    if (!file) return file.error();
    return readPlv(file.value().stream, file.value().bytes, pathText(path), progress);
}

} // namespace tavex2
