#include "acquisition/Sound.h"
#include "platform/SoundServer.h"
#include "platform/sdl/SdlSound.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavex2::test {
namespace {

using namespace std::chrono_literals;

/// Plays on a sound server of its own and listens to its output.
class PlaySoundTest : public testing::Test {
  protected:
    std::filesystem::path tone(const char* name, double frequencyHz, double seconds) {
        EXPECT_TRUE(WriteTone(folder / name, frequencyHz, seconds));
        return folder / name;
    }

    TemporaryFolder folder;
    SoundServer server{folder.path()};
};

TEST_F(PlaySoundTest, APlayedToneIsHeardAtItsFrequencyAndForItsTime) {
    ASSERT_TRUE(server.running()) << "the tests need pulseaudio and pulseaudio-utils";
    SdlSound sound;
    EXPECT_GE(sound.deviceCount(), 1);
    for (const double frequencyHz : {500.0, 1000.0}) {
        Listener listener(server);
        ASSERT_TRUE(listener.hears());
        sound.playFile(tone("tone.wav", frequencyHz, 0.5));
        sound.finishPlaying(5s);
        const Heard heard = listener.stop();
        EXPECT_NEAR(heard.frequencyHz, frequencyHz, frequencyHz * 0.1); // a busy machine's sound has gaps
        EXPECT_GT(heard.seconds, 0.45);
        EXPECT_LT(heard.seconds, 1.0);
        EXPECT_NEAR(heard.loudest, 0.5, 0.02) << "64 of 128";
    }
}

TEST_F(PlaySoundTest, OnlyWhatTheHeaderSaysIsPlayedOfAFileWithAnOlderTail) {
    ASSERT_TRUE(server.running());
    tone("tone.wav", 500, 2.0);
    const auto shorter = tone("tone.wav", 1000, 0.3);
    ASSERT_GT(std::filesystem::file_size(shorter), 20000U) << "the tail is there";
    SdlSound sound;
    Listener listener(server);
    ASSERT_TRUE(listener.hears());
    sound.playFile(shorter);
    sound.finishPlaying(5s);
    const Heard heard = listener.stop();
    // The tail would be another 1.7 s of half the frequency.
    EXPECT_NEAR(heard.frequencyHz, 1000, 100);
    EXPECT_GT(heard.seconds, 0.25);
    EXPECT_LT(heard.seconds, 1.0);
}

TEST_F(PlaySoundTest, ASecondSoundCutsOffTheFirst) {
    ASSERT_TRUE(server.running());
    const auto first = tone("first.wav", 500, 3.0);
    const auto second = tone("second.wav", 1000, 0.3);
    SdlSound sound;
    Listener listener(server);
    ASSERT_TRUE(listener.hears());
    sound.playFile(first);
    ASSERT_TRUE(listener.waitForSound());
    sound.playFile(second);
    sound.finishPlaying(5s);
    const Heard heard = listener.stop();
    EXPECT_LT(heard.seconds, 2.0);
    EXPECT_NEAR(heard.lastFrequencyHz, 1000, 200);
}

TEST_F(PlaySoundTest, MissingAndForeignFilesAreSilent) {
    ASSERT_TRUE(server.running());
    std::ofstream(folder / "foreign.wav") << "this is no sound";
    SdlSound sound;
    Listener listener(server);
    ASSERT_TRUE(listener.hears());
    sound.playFile(folder / "missing.wav");
    sound.playFile(folder / "foreign.wav");
    sound.finishPlaying(2s);
    EXPECT_EQ(listener.stop().loudest, 0);
}

TEST_F(PlaySoundTest, PlayingReturnsBeforeTheSoundIsOver) {
    ASSERT_TRUE(server.running());
    const auto file = tone("tone.wav", 500, 2.0);
    SdlSound sound;
    Listener listener(server);
    ASSERT_TRUE(listener.hears());
    sound.playFile(file); // opens the output
    sound.finishPlaying(5s);
    const auto start = std::chrono::steady_clock::now();
    sound.playFile(file);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s) << "a tone of two";
    sound.finishPlaying(5s);
    EXPECT_GT(listener.stop().seconds, 3.5) << "both were heard";
}

TEST_F(PlaySoundTest, AServerThatDiesIsSilenceAndNoMore) {
    ASSERT_TRUE(server.running());
    const auto file = tone("tone.wav", 500, 0.2);
    SdlSound sound;
    sound.playFile(file);
    sound.finishPlaying(5s);
    server.kill();
    sound.playFile(file);
    sound.playFile(file);
    sound.finishPlaying(1s);
}

TEST(NoSoundServerTest, WithoutASoundSystemThereIsNoDevice) {
    TemporaryFolder folder;
    const ScopedEnvironment driver("SDL_AUDIODRIVER", "pulseaudio");
    const ScopedEnvironment nowhere("PULSE_SERVER", "unix:" + (folder / "nobody").string());
    SdlSound sound;
    EXPECT_EQ(sound.deviceCount(), 0);
    sound.playFile(folder / "tone.wav");
    sound.finishPlaying(10s);
}

} // namespace
} // namespace tavex2::test
