#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
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

} // namespace tavex2::test
