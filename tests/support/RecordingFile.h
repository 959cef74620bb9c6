#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tavex2::test {

/// Writes a 16-bit PCM WAVE file from interleaved samples, byte by byte.
inline void writeWave(const std::filesystem::path& path, int channels, int rateHz,
                      const std::vector<std::int16_t>& samples) {
    std::string bytes;
    const auto add = [&bytes](std::uint64_t value, int width) {
        for (int i = 0; i < width; ++i)
            bytes += static_cast<char>((value >> (8 * i)) & 0xFFU);
    };
    const std::size_t dataBytes = samples.size() * 2;
    bytes += "RIFF";
    add(36 + dataBytes, 4);
    bytes += "WAVEfmt ";
    add(16, 4);
    add(1, 2);
    add(static_cast<std::uint64_t>(channels), 2);
    add(static_cast<std::uint64_t>(rateHz), 4);
    add(static_cast<std::uint64_t>(rateHz * channels * 2), 4);
    add(static_cast<std::uint64_t>(channels * 2), 2);
    add(16, 2);
    bytes += "data";
    add(dataBytes, 4);
    for (const std::int16_t sample : samples)
        add(static_cast<std::uint16_t>(sample), 2);
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

/// The interleaved samples of a 16-bit PCM WAVE file; empty when the file holds no data chunk.
inline std::vector<std::int16_t> readWave(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const auto number = [&bytes](std::size_t at, int width) {
        std::uint32_t value = 0;
        for (int i = 0; i < width; ++i)
            value |= std::uint32_t{static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)])} << (8 * i);
        return value;
    };
    std::vector<std::int16_t> samples;
    for (std::size_t chunk = 12; chunk + 8 <= bytes.size(); chunk += 8 + number(chunk + 4, 4)) {
        if (bytes.compare(chunk, 4, "data") != 0) continue;
        for (std::size_t at = chunk + 8; at + 2 <= chunk + 8 + number(chunk + 4, 4); at += 2)
            samples.push_back(static_cast<std::int16_t>(number(at, 2)));
        break;
    }
    return samples;
}

} // namespace tavex2::test
