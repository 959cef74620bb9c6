#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tavex2 {

/// What a name ends in, in small letters and with its point: ".lmb" of "Trial.LMB"; empty without one.
std::string extensionOf(const std::filesystem::path& file);

/// A name as a person typed it, with `extension` (".lmb") behind it unless it ends in one that this program knows:
/// "Pilot" and "Pilot1.5" get it, "Pilot.TAB" stays.
std::filesystem::path withExtension(const std::filesystem::path& typed, std::string_view extension);

/// A path from the root of the file system; as it is when the current folder is not there any more.
std::filesystem::path wholePath(const std::filesystem::path& path);

} // namespace tavex2
