#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>

namespace tavex2 {

template <class T>
concept Arithmetic = std::integral<T> || std::floating_point<T>;

/// The bytes of a number as files hold it: least significant byte first, whatever the machine's own order.
template <Arithmetic T>
std::array<std::byte, sizeof(T)> littleEndianBytes(T value) {
    auto bytes = std::bit_cast<std::array<std::byte, sizeof(T)>>(value);
    if constexpr (std::endian::native == std::endian::big) std::ranges::reverse(bytes);
    return bytes;
}

/// The number that a file holds in `bytes`.
template <Arithmetic T>
T fromLittleEndian(std::array<std::byte, sizeof(T)> bytes) {
    if constexpr (std::endian::native == std::endian::big) std::ranges::reverse(bytes);
    return std::bit_cast<T>(bytes);
}

} // namespace tavex2
