#include "app/cli/CommandLine.h"
#include "platform/SoundServer.h"
#include "platform/sdl/SdlSound.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tavex2::test {
namespace {

TEST(TonePlayedTest, ACollectionsToneIsHeardAtItsFrequency) {
    TemporaryFolder folder;
    SoundServer server(folder.path());
    ASSERT_TRUE(server.running()) << "the tests need pulseaudio and pulseaudio-utils";
    const FakeSettingsStore store;
    std::ostringstream out;
    std::ostringstream err;
    const std::string to = folder.path().string();
    const std::vector<const char*> arguments{
        "tavex2",    "collect", "--out",         to.c_str(), "--set",         "Duration=0.2", "--set",
        "DIOMask=0", "--set",   "SoundBefore=1", "--set",    "SoundFreq=800", "--set",        "SoundDuration=0.4"};
    Listener listener(server);
    ASSERT_TRUE(listener.hears());
    const CommandLineResult result =
        runCommandLine(static_cast<int>(arguments.size()), arguments.data(),
                       {.out = out, .err = err, .store = store, .drawPicture = nullptr, .openSound = [] {
                            return std::make_unique<SdlSound>();
                        }});
    EXPECT_EQ(result.exitCode, 0) << err.str();
    const Heard heard = listener.stop();
    EXPECT_NEAR(heard.frequencyHz, 800, 80); // a busy machine's sound has gaps
    EXPECT_GT(heard.seconds, 0.35) << "to its end, though the trial was over before";
}

} // namespace
} // namespace tavex2::test
