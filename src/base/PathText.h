#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tavex2 {

// The records and messages hold paths as UTF-8 text, whatever the system's own encoding of file names.

inline std::string pathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

inline std::filesystem::path pathFromText(std::string_view text) {
    return std::u8string(text.begin(), text.end());
}

} // namespace tavex2
