#include "files/RecentFiles.h"

#include "base/FileNames.h"
#include "base/PathText.h"

#include <algorithm>

namespace tavex2 {

namespace {

/// No name has it but by malice.
constexpr char separator = '\n';

} // namespace

void rememberFile(PersistedPaths& paths, const std::filesystem::path& file) {
    paths.LastFile = pathText(wholePath(file));
    forgetFile(paths, paths.LastFile);
    paths.RecentFiles.insert(paths.RecentFiles.begin(), paths.LastFile);
    if (paths.RecentFiles.size() > mostRecentFiles) paths.RecentFiles.resize(mostRecentFiles);
}

void forgetFile(PersistedPaths& paths, const std::string& file) {
    std::erase(paths.RecentFiles, file);
}

std::string recentFilesText(const std::vector<std::string>& files) {
    std::string text;
    for (const std::string& file : files)
        text += text.empty() ? file : separator + file;
    return text;
}

std::vector<std::string> recentFilesOf(std::string_view text) {
    std::vector<std::string> files;
    while (!text.empty() && files.size() < mostRecentFiles) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0) files.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return files;
}

} // namespace tavex2
