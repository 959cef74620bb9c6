#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tavex2 {

// The system's calls take wide texts; the program's own are UTF-8.

inline std::wstring wide(std::string_view text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end())).wstring();
}

inline std::string narrow(std::wstring_view text) {
    const std::u8string utf8 = std::filesystem::path(text).u8string();
    return {utf8.begin(), utf8.end()};
}

} // namespace tavex2
