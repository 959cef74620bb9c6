#pragma once

#include "app/cli/CommandLine.h"
#include "support/Fakes.h"
#include "support/RecordingFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sstream>

namespace tavex2::test {

/// Keeps the bytes of what is played.
class LoggingSound final : public SoundOutput {
  public:
    int devices = 1;
    std::vector<std::string>* heard = nullptr;

    int deviceCount() const override { return devices; }
    void playFile(const std::filesystem::path& path) override { heard->push_back(bytesOf(path)); }
    void finishPlaying(std::chrono::milliseconds) override { heard->emplace_back("finished"); }
};

/// Runs the program's commands as they are typed, in this process.
class CommandLineTest : public testing::Test {
  protected:
    CommandLineTest() {
        // Three channels of 400 scans at 100 Hz: a counter, a step from scan 150 on, a constant.
        std::vector<std::int16_t> samples;
        for (int i = 0; i < 400; ++i)
            for (const int sample : {i, i < 150 ? 0 : 10000, -3})
                samples.push_back(static_cast<std::int16_t>(sample));
        writeWave(folder / "rec.wav", 3, 100, samples);
        std::filesystem::create_directory(out);
    }

    int run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "tavex2");
        std::vector<const char*> argv;
        for (const std::string& argument : arguments)
            argv.push_back(argument.c_str());
        stdOut.str("");
        stdErr.str("");
        result = runCommandLine(static_cast<int>(argv.size()), argv.data(),
                                {.out = stdOut,
                                 .err = stdErr,
                                 .store = store,
                                 .drawPicture =
                                     [this](auto& picture) {
                                         pictures.push_back(picture);
                                         return Result<void>();
                                     },
                                 .openSound =
                                     [this] {
                                         ++soundsOpened;
                                         auto opened = std::make_unique<LoggingSound>();
                                         opened->devices = soundDevices;
                                         opened->heard = &heard;
                                         return opened;
                                     }});
        return result.exitCode;
    }

    int collect(std::vector<std::string> arguments) {
        std::vector<std::string> all{"collect", "--fast",     "--board", "recording:" + (folder / "rec.wav").string(),
                                     "--out",   out.string(), "--set",   "Rate=100",
                                     "--set",   "Duration=1", "--set",   "Channels=0:2"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return run(all);
    }

    int soundDevices = 1;
    int soundsOpened = 0;
    std::vector<std::string> heard; ///< bytes of the files played, "finished" for each wait

    /// Everything that stands on the error stream, which has to be one line.
    std::string errorLine() {
        const std::string text = stdErr.str();
        EXPECT_EQ(std::ranges::count(text, '\n'), 1) << text;
        EXPECT_TRUE(text.starts_with("tavex2: ")) << text;
        return text;
    }

    std::vector<std::string> filesWritten() {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(out))
            names.push_back(entry.path().filename().string());
        std::ranges::sort(names);
        return names;
    }

    /// Sample of a written trial: float32 at (channel, sample) behind the header and the time block.
    float sample(const std::string& name, int samples, int channel, int index) {
        const std::string bytes = bytesOf(out / name);
        float value = 0;
        const std::size_t offset = 4374U + 4U * static_cast<std::size_t>((channel + 1) * samples + index);
        EXPECT_LE(offset + 4, bytes.size());
        std::memcpy(&value, bytes.data() + offset, 4);
        return value;
    }

    static float volts(int recorded) { return static_cast<float>(recorded / 32768.0 * 10.0); }

    TemporaryFolder folder;
    std::filesystem::path out = folder / "out";
    FakeSettingsStore store;
    std::ostringstream stdOut;
    std::ostringstream stdErr;
    std::vector<TrialPicture> pictures;
    CommandLineResult result;
};

} // namespace tavex2::test
