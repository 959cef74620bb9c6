#include "base/Windows1252.h"

#include "base/Utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tavex2 {

namespace {

/// The characters of the bytes 80 to 9F; all other bytes have the number of their character.
constexpr std::array<char16_t, 32> upperControls{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char byteFor(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
    const auto found = std::ranges::find(upperControls, character);
    return found == upperControls.end() ? '?' : static_cast<char>(0x80 + (found - upperControls.begin()));
}

} // namespace

std::string windows1252FromUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty())
        result += byteFor(takeCharacter(text));
    return result;
}

std::string utf8FromWindows1252(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char each : text) {
        const auto byte = static_cast<unsigned char>(each);
        const char16_t character = byte >= 0x80 && byte < 0xA0 ? upperControls[byte - 0x80u] : byte;
        if (character < 0x80) {
            result += static_cast<char>(character);
            continue;
        }
        if (character < 0x800) {
            result += static_cast<char>(0xC0 | (character >> 6));
        } else {
            result += static_cast<char>(0xE0 | (character >> 12));
            result += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        }
        result += static_cast<char>(0x80 | (character & 0x3F));
    }
    return result;
}

} // namespace tavex2
