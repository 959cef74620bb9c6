#include "platform/qt/DesktopShell.h"

#include "support/TemporaryFolder.h"
#include "support/WindowTesting.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tavex2::test {
namespace {

/// A program that leaves its folder and its first argument in a file.
class DesktopShellTest : public testing::Test {
  protected:
    DesktopShellTest() {
        std::ofstream(program) << "#!/bin/sh\nprintf '%s|%s' \"$PWD\" \"$1\" >'" << folder.path().string()
                               << "/answer.part'\nmv '" << folder.path().string() << "/answer.part' '"
                               << folder.path().string() << "/answer'\n";
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }
    std::string answer() {
        EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(folder / "answer"); }));
        return bytesOf(folder / "answer");
    }

    TemporaryFolder folder;
    std::filesystem::path program = folder / "record it";
    DesktopShell shell;
};

TEST_F(DesktopShellTest, StartsAProgramWithItsParametersInItsFolder) {
    const std::string elsewhere = folder.path().parent_path().string();
    shell.execute({.file = program.string(), .parameters = "\"/d/my trials/a.tab\"", .folder = elsewhere});
    EXPECT_GT(shell.lastResult(), 32);
    EXPECT_EQ(answer(), elsewhere + "|/d/my trials/a.tab");
}

TEST_F(DesktopShellTest, StartsAProgramByItsCommandLine) {
    shell.run("\"" + program.string() + "\" one two");
    EXPECT_GT(shell.lastResult(), 32);
    EXPECT_TRUE(answer().ends_with("|one"));
    for (const char* nothing : {"no-such-program.exe", ""}) {
        shell.run(nothing);
        EXPECT_EQ(shell.lastResult(), Shell::fileNotFound);
    }
}

TEST_F(DesktopShellTest, TellsWhetherAFileCanBeRead) {
    EXPECT_TRUE(shell.canRead(folder.path().string(), "record it"));
    EXPECT_TRUE(shell.canRead(folder.path().string() + "/", "record it"));
    EXPECT_TRUE(shell.canRead("", program.string()));
    EXPECT_FALSE(shell.canRead(folder.path().string(), "Lumidor2.exe"));
    EXPECT_EQ(shell.pathOf("/a/", "b"), "/a/b") << "separators are not doubled";
    EXPECT_EQ(shell.pathOf("/a", "b"), "/a/b");
    EXPECT_EQ(shell.pathOf("", "b"), "b");
}

} // namespace
} // namespace tavex2::test
