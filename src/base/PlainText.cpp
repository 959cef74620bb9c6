#include "base/PlainText.h"

#include "base/Utf8.h"

#include <algorithm>
#include <array>

namespace tavex2 {

namespace {

std::size_t charactersIn(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string blanksTo(std::string_view text, std::size_t width) {
    const std::size_t characters = charactersIn(text);
    return std::string(width > characters ? width - characters : 0, ' ');
}

/// Whether a terminal does something at this character instead of showing it.
bool commands(char32_t character) {
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    const bool turnsDirection = character == 0x061C || character == 0x200E || character == 0x200F ||
                                (character >= 0x202A && character <= 0x202E) ||
                                (character >= 0x2066 && character <= 0x2069);
    const bool breaksLine = character == 0x2028 || character == 0x2029;
    return control || turnsDirection || breaksLine;
}

std::string byNumber(char32_t character) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += digits[(character >> shift) & 0xFU];
    return text;
}

} // namespace

std::string_view withoutBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string lowerCase(std::string_view text) {
    std::string small(text);
    std::ranges::transform(small, small.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return small;
}

bool hasControlCharacters(std::string_view text) {
    return std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

std::string rightAligned(std::string_view text, std::size_t width) {
    return blanksTo(text, width) += text;
}

std::string leftAligned(std::string_view text, std::size_t width) {
    return std::string(text) += blanksTo(text, width);
}

std::string printable(std::string_view text, LineBreaks lineBreaks) {
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const std::string_view before = text;
        const char32_t character = takeCharacter(text);
        const bool wanted = lineBreaks == LineBreaks::Keep && (character == '\n' || character == '\t');
        if (character == illFormed)
            shown += "\xEF\xBF\xBD";
        else if (commands(character) && !wanted)
            shown += byNumber(character);
        else
            shown += before.substr(0, before.size() - text.size());
    }
    return shown;
}

} // namespace tavex2
