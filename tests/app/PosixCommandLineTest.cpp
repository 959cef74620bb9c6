#include "app/CommandLineFixture.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

/// What only POSIX systems put in a command's way: pipes, links, signals.

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
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

} // namespace
} // namespace tavex2::test
