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
                               << "/answer.part'\ncommand -p mv '" << folder.path().string() << "/answer.part' '"
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

TEST_F(DesktopShellTest, ANameReachesAProgramAsOneArgumentQuotedOrNot) {
    for (const char* name : {"Trial 1.lmb", "\"Trial 1.lmb\"", "Trial  \"a\" 2.lmb"}) {
        std::filesystem::remove(folder / "answer");
        shell.execute({.file = program.string(), .parameters = name, .folder = {}});
        std::string expected = name;
        if (expected.front() == '"') expected = expected.substr(1, expected.size() - 2);
        EXPECT_TRUE(answer().ends_with("|" + expected)) << answer();
    }
}

TEST_F(DesktopShellTest, AProgramThatHasNoSubstituteIsNotReplacedByTheDesktops) {
    shell.execute(
        {.file = "Lumidor2.exe", .parameters = (folder / "record it").string(), .folder = {}, .onlyThisProgram = true});
    EXPECT_FALSE(shell.lastStarted());
}

/// With programs of its own alone, among them a tool that tells the desktop's default.
class DesktopDefaultTest : public DesktopShellTest {
  protected:
    DesktopDefaultTest() {
        qputenv("PATH", folder.path().c_str());
        qputenv("XDG_DATA_HOME", folder.path().c_str());
        std::filesystem::create_directory(folder / "applications");
    }
    ~DesktopDefaultTest() override {
        qputenv("PATH", m_path);
        qputenv("XDG_DATA_HOME", m_dataHome);
    }
    void makeDefault(const std::string& kind, const std::string& entry) {
        std::ofstream(folder / "xdg-mime")
            << "#!/bin/sh\n[ \"$*\" = 'query default " + kind + "' ] && echo own.desktop\n";
        std::filesystem::permissions(folder / "xdg-mime", std::filesystem::perms::owner_all);
        std::ofstream(folder.path() / "applications" / "own.desktop") << entry;
    }

  private:
    QByteArray m_path = qgetenv("PATH");
    QByteArray m_dataHome = qgetenv("XDG_DATA_HOME");
};

TEST_F(DesktopDefaultTest, TheDesktopsOwnEditorAndHelpTakeThePlaceOfUnknownOnes) {
    const std::string entry =
        "[Desktop Entry]\nName=Own\nExec=\"" + program.string() + "\" --new %U\n[Desktop Action other]\nExec=other\n";
    makeDefault("text/plain", entry);
    shell.run("notepad.exe");
    EXPECT_TRUE(shell.lastStarted());
    EXPECT_TRUE(answer().ends_with("|--new"));
    std::filesystem::remove(folder / "answer");
    makeDefault("x-scheme-handler/help", entry);
    shell.run("WinHlp32.EXE");
    EXPECT_TRUE(shell.lastStarted());
    EXPECT_TRUE(answer().ends_with("|--new"));
}

TEST_F(DesktopDefaultTest, NothingIsStartedWhereThereIsNoWindowToShow) {
    shell.run("notepad.exe");
    EXPECT_FALSE(shell.lastStarted()) << "nobody knows an editor";
    makeDefault("text/plain", "[Desktop Entry]\nExec=\"" + program.string() + "\" %F\nTerminal=true\n");
    shell.run("notepad.exe");
    EXPECT_FALSE(shell.lastStarted()) << "one for a terminal";
    makeDefault("text/plain", "[Desktop Entry]\nExec=gone %F\n");
    shell.run("notepad.exe");
    EXPECT_FALSE(shell.lastStarted()) << "one that was removed";
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
