#include "app/CommandLineFixture.h"
#include "app/StartUp.h"
#include "platform/Interruption.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// What only POSIX systems put in a command's way: pipes, links, signals.

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(CommandLineTest, APipeIsRefusedByEveryReaderInsteadOfWaitedFor) {
    for (const char* name : {"p.lmb", "p.plv", "p.set", "p.wav"}) {
        const std::string pipe = (folder / name).string();
        ASSERT_EQ(::mkfifo(pipe.c_str(), 0666), 0);
        if (std::string(name) == "p.wav")
            EXPECT_EQ(run({"collect", "--out", out.string(), "--board", "recording:" + pipe}), 1);
        else
            EXPECT_EQ(run({"show", pipe}), 1);
        EXPECT_THAT(errorLine(), AllOf(HasSubstr(name), HasSubstr("not an ordinary file")));
    }
    EXPECT_EQ(run({"show", "/dev/zero"}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("not an ordinary file"));
    EXPECT_EQ(run({"show", folder.path().string()}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("is a folder"));
}

TEST_F(CommandLineTest, EveryCommandThatWritesEndsInOrderWhenItIsAskedTo) {
    ASSERT_EQ(collect({}), 0);
    ASSERT_EQ(collect({"--format", "plv"}), 0);
    const std::string trial = (out / "Trial0001.lmb").string();
    const std::string stimulus = (out / "Trial0001.plv").string();
    const auto in = [this](const char* name) { return (folder / name).string(); };
    for (const int request : {SIGINT, SIGTERM, SIGHUP})
        for (const std::vector<std::string>& arguments :
             std::vector<std::vector<std::string>>{{"convert", trial, in("t.lmb")},
                                                   {"convert", trial, in("t.tab")},
                                                   {"convert", trial, in("t.lma")},
                                                   {"convert", stimulus, in("t.plv")},
                                                   {"overlay", trial, trial, in("m.lma")},
                                                   {"plot", trial, in("p.png")},
                                                   {"show", trial}}) {
            const Interruption outer;
            ASSERT_EQ(::raise(request), 0);
            EXPECT_TRUE(Interruption::requested());
            EXPECT_EQ(run(arguments), 1) << arguments.front();
            EXPECT_THAT(errorLine(), HasSubstr("cancelled"));
        }
    fs::remove_all(out);
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(folder.path()))
        left.push_back(entry.path().filename());
    EXPECT_THAT(left, ElementsAre("rec.wav"));
}

TEST(InterruptionTest, ListensOnlyWhileItLives) {
    const auto before = std::signal(SIGTERM, SIG_IGN);
    {
        const Interruption ignoring;
        ::raise(SIGTERM);
        EXPECT_FALSE(Interruption::requested()) << "what the program was started to ignore stays ignored";
    }
    EXPECT_EQ(std::signal(SIGTERM, before), SIG_IGN);
    {
        const Interruption listening;
        EXPECT_FALSE(Interruption::requested());
        ::raise(SIGTERM);
        EXPECT_TRUE(Interruption::requested());
    }
    const Interruption again;
    EXPECT_FALSE(Interruption::requested()) << "the next one starts anew";
}

TEST_F(CommandLineTest, TwoProcessesNeverReplaceEachOthersFiles) {
    constexpr int trialsEach = 15;
    std::vector<pid_t> children;
    for (int process = 0; process < 2; ++process)
        if (const pid_t child = ::fork(); child != 0)
            children.push_back(child);
        else
            ::_exit(collect({"--trials", std::to_string(trialsEach), "--format", "lmb", "--format", "plv", "--format",
                             "tab", "--set", "Duration=0.05"}));
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(filesWritten().size(), 2U * 3U * trialsEach);
}

TEST_F(CommandLineTest, ALinkOfTheProbesNameKeepsWhatItLeadsTo) {
    std::ofstream(folder / "precious") << "precious";
    fs::create_symlink(folder / "precious", folder / ".tavex2-write-probe");
    EXPECT_EQ(toneFileIn(folder.path(), folder / "user"), folder / "tone.wav");
    EXPECT_EQ(bytesOf(folder / "precious"), "precious");
    EXPECT_TRUE(fs::is_symlink(folder / ".tavex2-write-probe"));
}

TEST_F(CommandLineTest, AFolderThatIsGoneIsToldAndNoCrash) {
    const fs::path before = fs::current_path();
    fs::create_directory(folder / "gone");
    fs::current_path(folder / "gone");
    fs::remove(folder / "gone");
    EXPECT_EQ(run({"tone", "t.wav"}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("The current folder does not exist any more"));
    EXPECT_EQ(run({"t.lmb"}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("There is no file"));
    EXPECT_EQ(run({"convert", (folder / "none.lmb").string(), "t.tab"}), 1);
    errorLine();
    fs::current_path(before);
}

} // namespace
} // namespace tavex2::test
