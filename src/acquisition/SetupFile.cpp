#include "acquisition/SetupFile.h"

#include "acquisition/AcqFields.h"
#include "base/LittleEndian.h"
#include "base/PathText.h"
#include "base/Windows1252.h"
#include "platform/AtomicFile.h"
#include "platform/InputFile.h"

#include <algorithm>
#include <limits>
#include <span>
#include <string_view>
#include <utility>

namespace tavex2 {

namespace {

constexpr std::int16_t layoutVersion = 1;
constexpr std::string_view firstField = "Version";
/// The last field of the first group, which is read whole before its version is judged.
constexpr std::string_view lastOfFirstGroup = "FilePrefix";

class Encoder {
  public:
    std::string bytes;

    template <Arithmetic T>
    void put(T field) {
        for (const std::byte each : littleEndianBytes(field))
            bytes += static_cast<char>(each);
    }
    void put(Bool16 field) { put(field.raw()); }
    void put(const std::array<std::int16_t, 8>& field) {
        for (const std::int16_t each : field)
            put(each);
    }
    void put(const FixedText<50>& field) { bytes.append(field.bytes().data(), field.bytes().size()); }
    void put(const std::string& field) {
        const std::string text = windows1252FromUtf8(field).substr(0, std::numeric_limits<std::uint16_t>::max());
        put(static_cast<std::uint16_t>(text.size()));
        bytes += text;
    }
};

/// Reads fields until the stream ends; a field that is not there in full stays as it was, and so do all after it.
class Decoder {
  public:
    explicit Decoder(std::istream& in) : m_in(in) {}

    bool failed() const { return !m_in; }

    template <Arithmetic T>
    void get(T& field) {
        std::array<std::byte, sizeof(T)> bytes;
        if (m_in.read(reinterpret_cast<char*>(bytes.data()), sizeof(T))) field = fromLittleEndian<T>(bytes);
    }
    void get(Bool16& field) {
        std::int16_t raw = field.raw();
        get(raw);
        field = Bool16::fromRaw(raw);
    }
    void get(std::array<std::int16_t, 8>& field) {
        for (std::int16_t& each : field)
            get(each);
    }
    void get(FixedText<50>& field) {
        std::array<char, 50> bytes;
        if (m_in.read(bytes.data(), bytes.size())) field.bytes() = bytes;
    }
    void get(std::string& field) {
        std::uint16_t length = 0;
        get(length);
        std::string text(length, '\0');
        if (m_in.read(text.data(), length)) field = utf8FromWindows1252(text);
    }

  private:
    std::istream& m_in;
};

} // namespace

std::string encodeSetup(const AcqSettings& settings) {
    Encoder encoder;
    // What lies in memory may be the version of a file that was refused.
    AcqSettings written = settings;
    written.setup.Version = layoutVersion;
    forEachField(std::as_const(written),
                 [&](std::string_view, const auto& field, const FieldRange&) { encoder.put(field); });
    return encoder.bytes;
}

Result<void> decodeSetup(std::istream& in, AcqSettings& settings) {
    Decoder decoder(in);
    bool versionRead = false;
    bool wrongVersion = false;
    forEachField(settings, [&](std::string_view name, auto& field, const FieldRange&) {
        if (wrongVersion) return;
        decoder.get(field);
        if (name == firstField) versionRead = !decoder.failed();
        // The version counts also where the first group cannot be read to its end: another layout may well be shorter.
        if (name == lastOfFirstGroup) wrongVersion = versionRead && settings.setup.Version != layoutVersion;
    });
    if (wrongVersion)
        return Error{ErrorKind::WrongVersion, "The version number of the setup file is " +
                                                  std::to_string(settings.setup.Version) + " and not 1."};
    if (decoder.failed()) return Error{ErrorKind::BadFormat, "The setup file ends too soon or is of another kind."};
    return {};
}

Result<void> writeSetupFile(const std::filesystem::path& path, const AcqSettings& settings) {
    Result<AtomicFile> file = AtomicFile::create(path);
    if (!file) return file.error();
    const std::string bytes = encodeSetup(settings);
    if (auto written = file.value().write(std::as_bytes(std::span(bytes))); !written) return written;
    return file.value().commit();
}

Result<void> readSetupFile(const std::filesystem::path& path, AcqSettings& settings) {
    Result<InputFile> file = openForReading(path);
    if (!file) return file.error();
    Result<void> read = decodeSetup(file.value().stream, settings);
    if (!read) return Error{read.error().kind, pathText(path) + ": " + read.error().text};
    return {};
}

} // namespace tavex2
