#include "files/FreeName.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tavex2::test {
namespace {

void touch(const std::filesystem::path& path) {
    std::ofstream(path).put('x');
}

TEST(FreeNameTest, TakesThePlainNameWhenItIsFree) {
    const TemporaryFolder folder;
    EXPECT_EQ(freeName(folder.path(), "Trial0001", ".lmb"), folder / "Trial0001.lmb");
}

TEST(FreeNameTest, CountsFromTwoAndFillsTheFirstGap) {
    const TemporaryFolder folder;
    touch(folder / "Trial0001.lmb");
    EXPECT_EQ(freeName(folder.path(), "Trial0001", ".lmb"), folder / "Trial0001 (2).lmb");
    touch(folder / "Trial0001 (2).lmb");
    touch(folder / "Trial0001 (4).lmb");
    EXPECT_EQ(freeName(folder.path(), "Trial0001", ".lmb"), folder / "Trial0001 (3).lmb");
    EXPECT_EQ(freeName(folder.path(), "Trial0001", ".tab"), folder / "Trial0001.tab");
}

TEST(FreeNameTest, CountsFoldersAsTaken) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "a.lmb");
    EXPECT_EQ(freeName(folder.path(), "a", ".lmb"), folder / "a (2).lmb");
}

TEST(FreeNameTest, GivesThePlainNameInAFolderThatDoesNotExist) {
    const TemporaryFolder folder;
    EXPECT_EQ(freeName(folder / "none", "a", ".lmb"), folder.path() / "none" / "a.lmb");
}

} // namespace
} // namespace tavex2::test
