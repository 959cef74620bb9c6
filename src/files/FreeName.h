#pragma once

#include "base/Result.h"

#include <filesystem>
#include <functional>
#include <string_view>

namespace tavex2 {

/// A name in `folder` that no file has yet: stem + extension (".lmb", with its dot), else stem + " (2)" + extension,
/// " (3)"... The name may be taken by the time it is used, so write with IfExists::Refuse and ask again.
std::filesystem::path freeName(const std::filesystem::path& folder, std::string_view stem, std::string_view extension);

/// Lets `write` write a new file under such a name and gives the path. `write` refuses to replace a file (error
/// AlreadyExists); then the next name is tried, because another program has taken it meanwhile.
Result<std::filesystem::path> writeToFreeName(const std::filesystem::path& folder, std::string_view stem,
                                              std::string_view extension,
                                              const std::function<Result<void>(const std::filesystem::path&)>& write);

} // namespace tavex2
