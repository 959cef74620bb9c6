#pragma once

#include <filesystem>
#include <string_view>

namespace tavex2 {

/// A name in `folder` that no file has yet: stem + extension (".lmb", with its dot), else stem + " (2)" + extension,
/// " (3)"... The name may be taken by the time it is used, so write with IfExists::Refuse and ask again.
std::filesystem::path freeName(const std::filesystem::path& folder, std::string_view stem, std::string_view extension);

} // namespace tavex2
