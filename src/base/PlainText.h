#pragma once

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

namespace tavex2 {

/// Text without the blanks at both ends.
inline std::string_view withoutBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Text with small letters for the capital ones of ASCII.
inline std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

} // namespace tavex2
