#include "acquisition/Sound.h"

#include "base/Rounding.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <string>

namespace tavex2 {

namespace {

constexpr int sampleRateHz = 11025;
constexpr int headerBytes = 44;
constexpr double longestSeconds = 3600;

void append(std::string& bytes, std::uint32_t value, int width) {
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>((value >> (8 * i)) & 0xFFU);
}

} // namespace

std::string toneBytes(double frequencyHz, double durationSeconds) {
    // The width of the period is part of the file's bytes, so the short value of pi stays.
    constexpr double shortPi = 3.14159265;
    const auto n =
        static_cast<std::uint32_t>(roundHalfEven(std::clamp(durationSeconds, 0.0, longestSeconds) * sampleRateHz));

    std::string bytes("RIFF");
    append(bytes, n + headerBytes - 8, 4);
    bytes += "WAVEfmt ";
    append(bytes, 16, 4);           // size of the format block
    append(bytes, 1, 2);            // PCM
    append(bytes, 1, 2);            // channels
    append(bytes, sampleRateHz, 4); // samples a second
    append(bytes, sampleRateHz, 4); // bytes a second
    append(bytes, 1, 2);            // bytes a sample
    append(bytes, 8, 2);            // bits a sample
    bytes += "data";
    append(bytes, n, 4);

    const double radiansPerSample = frequencyHz / sampleRateHz * 2 * shortPi;
    for (std::uint32_t i = 0; i < n; ++i)
        bytes += static_cast<char>(roundHalfEven(std::sin(i * radiansPerSample) * 64 + 128));
    return bytes;
}

Result<void> WriteTone(const std::filesystem::path& path, double frequencyHz, double durationSeconds,
                       IfExists ifExists) {
    Result<AtomicFile> file = AtomicFile::create(path, ifExists);
    if (!file) return file.error();
    const std::string bytes = toneBytes(frequencyHz, durationSeconds);
    if (auto written = file.value().write(std::as_bytes(std::span(bytes))); !written) return written;
    return file.value().commit();
}

} // namespace tavex2
