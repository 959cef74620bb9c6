#pragma once

#include <cstdint>

namespace tavex2 {

/// A 16-bit integer used as a boolean in the settings record and in every file: -1 is True, 0 is False.
/// Any other value that a file carries counts as True and is kept as it stands.
class Bool16 {
  public:
    constexpr Bool16() = default;
    constexpr Bool16(bool value) : m_raw(value ? std::int16_t{-1} : std::int16_t{0}) {}

    static constexpr Bool16 fromRaw(std::int16_t raw) {
        Bool16 result;
        result.m_raw = raw;
        return result;
    }

    constexpr operator bool() const { return m_raw != 0; }
    constexpr std::int16_t raw() const { return m_raw; }

    friend constexpr bool operator==(Bool16 a, Bool16 b) { return a.m_raw == b.m_raw; }

  private:
    std::int16_t m_raw = 0;
};

} // namespace tavex2
