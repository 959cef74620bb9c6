#pragma once

#include "acquisition/records/ProgramState.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tavex2 {

/// How many files the list of recent ones holds.
inline constexpr std::size_t mostRecentFiles = 8;

/// Makes a file that was just opened or saved the last one and the first of the recent ones.
void rememberFile(PersistedPaths& paths, const std::filesystem::path& file);

/// Takes a file that is not there any more off the list of recent ones.
void forgetFile(PersistedPaths& paths, const std::string& file);

/// The list as one text for the store, and back; a text of anything else gives what it gives.
std::string recentFilesText(const std::vector<std::string>& files);
std::vector<std::string> recentFilesOf(std::string_view text);

} // namespace tavex2
