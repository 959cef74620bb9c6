#include "app/cli/CommandLine.h"
#include "files/Import.h"
#include "support/Fakes.h"
#include "support/RecordingFile.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <iostream>
#include <sstream>

namespace tavex2::test {
namespace {

/// Collects from a recorded heart signal.
class RecordedTrialTest : public testing::Test {
  protected:
    void collect(std::vector<std::string> arguments) {
        const std::vector<std::string> fixed{"collect", "--fast",
                                             "--board", "recording:" + recording.string(),
                                             "--out",   folder.path().string(),
                                             "--set",   "Channels=0:11",
                                             "--set",   "Rate=1000",
                                             "--set",   "Duration=3"};
        arguments.insert(arguments.begin(), fixed.begin(), fixed.end());
        run(arguments);
    }

    /// What a command prints.
    std::string run(const std::vector<std::string>& arguments) {
        std::vector<const char*> argv{"tavex2"};
        for (const std::string& each : arguments)
            argv.push_back(each.c_str());
        std::ostringstream out;
        const FakeSettingsStore store;
        EXPECT_EQ(runCommandLine(static_cast<int>(argv.size()), argv.data(),
                                 {.out = out,
                                  .err = std::cerr,
                                  .store = store,
                                  .drawPicture = [](const TrialPicture&) { return Result<void>(); },
                                  .openSound = nullptr})
                      .exitCode,
                  0);
        return out.str();
    }

    /// Whether a trial file holds the recording's scans from `first` on.
    void expectScans(const std::string& name, std::int64_t first) {
        const auto file = readLmbFile(folder / name);
        ASSERT_TRUE(file) << file.error().text;
        ASSERT_EQ(file.value().samples.channels(), 12);
        ASSERT_EQ(file.value().samples.samples(), 3001);
        ASSERT_GE(samples.size(), static_cast<std::size_t>(first + 3001) * 12);
        for (std::size_t channel = 0; channel < 12; ++channel)
            for (std::size_t i = 0; i < 3001; ++i) {
                const std::int16_t sample = samples[(static_cast<std::size_t>(first) + i) * 12 + channel];
                ASSERT_EQ(file.value().samples.floats(static_cast<int>(channel))[i],
                          static_cast<float>(sample / 32768.0 * 10.0))
                    << "channel " << channel << ", sample " << i;
            }
    }

    const std::filesystem::path recording = std::filesystem::path(TAVEX2_ROOT) / "tests" / "recordings" / "heart.wav";
    const std::vector<std::int16_t> samples = readWave(recording); ///< scan after scan, a full-scale one is 10 V
    TemporaryFolder folder;
};

TEST_F(RecordedTrialTest, HoldsTheRecordingsSamples) {
    collect({});
    expectScans("Trial0001.lmb", 0);
    EXPECT_EQ(std::filesystem::file_size(folder / "Trial0001.lmb"), 4374U + 4U * 3001U * 13U);
}

TEST_F(RecordedTrialTest, ThreeRepeatsAreConsecutive) {
    collect({"--set", "Repeat=3"});
    expectScans("Trial0001.lmb", 0);
    expectScans("Trial0001-r2.lmb", 3001);
    expectScans("Trial0001-r3.lmb", 6002);
}

TEST_F(RecordedTrialTest, ATriggeredTrialHasTheCrossingAfterItsPreTrigger) {
    collect({"--set", "TriggerMode=1", "--set", "TriggerChannel=7", "--set", "TriggerLevel=0.5"});
    const auto file = readLmbFile(folder / "Trial0001.lmb");
    ASSERT_TRUE(file);
    const auto lead = file.value().samples.floats(7);
    EXPECT_LT(lead[299], 0.5F);
    EXPECT_GE(lead[300], 0.5F);
    expectScans("Trial0001.lmb", 312); // the first crossing with a tenth of a trial before it is scan 612
}

TEST_F(RecordedTrialTest, TheTriggerCommandFindsEveryHeartbeatAndFirstTheOneThatACollectionStartsAt) {
    collect({"--set", "Duration=9", "--set", "FilePrefix=Whole"});
    std::istringstream found(run({"trigger", (folder / "Whole0001.lmb").string(), "--channel", "7", "--level", "1"}));
    std::string line;
    std::getline(found, line);
    EXPECT_EQ(line, "fires 12 times, first at 0.617 s");
    std::vector<int> beats;
    for (double seconds = 0; std::getline(found, line);) {
        std::istringstream(line) >> beats.emplace_back() >> seconds;
        EXPECT_EQ(seconds, beats.back() / 1000.0);
    }
    ASSERT_EQ(beats.size(), 12U);
    for (std::size_t i = 1; i < beats.size(); ++i)
        EXPECT_NEAR(beats[i] - beats[i - 1], 735, 25) << "a heart at rest, at beat " << i;

    collect({"--set", "TriggerMode=1", "--set", "TriggerChannel=7", "--set", "TriggerLevel=1"});
    expectScans("Trial0001.lmb", beats[0] - 300);
}

} // namespace
} // namespace tavex2::test
