#include "files/RecentFiles.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A file's whole path as this system writes it.
std::string whole(const std::string& path) {
    return std::filesystem::absolute(path).string();
}

TEST(RecentFilesTest, TheNewestStandsFirstAndEachOnce) {
    PersistedPaths paths;
    rememberFile(paths, "/d/a.lmb");
    rememberFile(paths, "/d/b.lmb");
    rememberFile(paths, "/d/a.lmb");
    EXPECT_EQ(paths.LastFile, whole("/d/a.lmb"));
    EXPECT_THAT(paths.RecentFiles, ElementsAre(whole("/d/a.lmb"), whole("/d/b.lmb")));
    forgetFile(paths, whole("/d/a.lmb"));
    EXPECT_THAT(paths.RecentFiles, ElementsAre(whole("/d/b.lmb")));
}

TEST(RecentFilesTest, TheOldestAreForgotten) {
    PersistedPaths paths;
    for (int i = 0; i < 20; ++i)
        rememberFile(paths, "/d/" + std::to_string(i));
    EXPECT_EQ(paths.RecentFiles.size(), mostRecentFiles);
    EXPECT_EQ(paths.RecentFiles.back(), whole("/d/12"));
}

TEST(RecentFilesTest, TheListComesBackFromItsText) {
    const std::vector<std::string> files{"/d/a b.lmb", "/d/;|.lmb", "/d/\xC3\xA4.plv"};
    EXPECT_EQ(recentFilesOf(recentFilesText(files)), files);
    EXPECT_THAT(recentFilesOf(""), IsEmpty());
    EXPECT_THAT(recentFilesOf("\n\nx\n"), ElementsAre("x"));
    EXPECT_EQ(recentFilesOf(std::string(100, '\n') + "a\nb\nc\nd\ne\nf\ng\nh\ni").size(), mostRecentFiles);
}

} // namespace
} // namespace tavex2::test
