#include "base/FileNames.h"

#include "base/PathText.h"
#include "base/PlainText.h"

#include <algorithm>
#include <array>
#include <system_error>

namespace tavex2 {

namespace {

/// The kinds of files that the program writes or reads.
constexpr std::array<std::string_view, 10> knownExtensions{".lmb", ".plv",  ".set", ".tab", ".lma",
                                                           ".wav", ".flac", ".png", ".pdf", ".svg"};

} // namespace

std::string extensionOf(const std::filesystem::path& file) {
    return lowerCase(pathText(file.extension()));
}

std::filesystem::path withExtension(const std::filesystem::path& typed, std::string_view extension) {
    if (std::ranges::find(knownExtensions, extensionOf(typed)) != knownExtensions.end()) return typed;
    std::string name = pathText(typed);
    if (name.ends_with('.')) name.pop_back();
    return pathFromText(name.append(extension));
}

std::filesystem::path wholePath(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path whole = std::filesystem::absolute(path, error);
    return error ? path : whole;
}

} // namespace tavex2
