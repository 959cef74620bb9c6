#include "app/cli/CommandLine.h"
#include "files/Import.h"
#include "platform/devices/SndfileSignal.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <iostream>
#include <sstream>

namespace tavex2::test {
namespace {

/// Collects from a recorded heart signal, where the recordings lie beside the project.
class RecordedTrialTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(recording)) GTEST_SKIP() << recording << " is not there";
    }

    void collect(std::vector<std::string> arguments) {
        const std::vector<std::string> fixed{"tavex2",
                                             "collect",
                                             "--fast",
                                             "--board",
                                             "recording:" + recording.string(),
                                             "--out",
                                             folder.path().string(),
                                             "--set",
                                             "Channels=0:11",
                                             "--set",
                                             "Rate=1000",
                                             "--set",
                                             "Duration=5"};
        arguments.insert(arguments.begin(), fixed.begin(), fixed.end());
        std::vector<const char*> argv;
        for (const std::string& each : arguments)
            argv.push_back(each.c_str());
        std::ostringstream out;
        const FakeSettingsStore store;
        ASSERT_EQ(runCommandLine(static_cast<int>(argv.size()), argv.data(),
                                 {.out = out,
                                  .err = std::cerr,
                                  .store = store,
                                  .drawPicture = [](const TrialPicture&) { return Result<void>(); },
                                  .openSound = nullptr})
                      .exitCode,
                  0);
    }

    /// Whether a trial file holds the recording's scans from `first` on.
    void expectScans(const std::string& name, std::int64_t first) {
        const auto file = readLmbFile(folder / name);
        ASSERT_TRUE(file) << file.error().text;
        ASSERT_EQ(file.value().samples.channels(), 12);
        ASSERT_EQ(file.value().samples.samples(), 5001);
        auto signal = openSndfileSignal(recording);
        ASSERT_TRUE(signal);
        std::vector<double> scans(5001 * 12);
        ASSERT_TRUE(signal.value()->read(first, scans));
        for (int channel = 0; channel < 12; ++channel)
            for (std::size_t i = 0; i < 5001; ++i)
                ASSERT_EQ(file.value().samples.floats(channel)[i],
                          static_cast<float>(scans[i * 12 + static_cast<std::size_t>(channel)]));
    }

    const std::filesystem::path recording =
        std::filesystem::path(TAVEX2_ROOT) / ".." / "shared" / "data" / "ecg-12lead-1000hz.wav";
    TemporaryFolder folder;
};

TEST_F(RecordedTrialTest, HoldsTheRecordingsSamples) {
    collect({});
    expectScans("Trial0001.lmb", 0);
    EXPECT_EQ(std::filesystem::file_size(folder / "Trial0001.lmb"), 4374U + 4U * 5001U * 13U);
}

TEST_F(RecordedTrialTest, ThreeRepeatsAreConsecutive) {
    collect({"--set", "Repeat=3"});
    expectScans("Trial0001.lmb", 0);
    expectScans("Trial0001-r2.lmb", 5001);
    expectScans("Trial0001-r3.lmb", 10002);
}

TEST_F(RecordedTrialTest, ATriggeredTrialHasTheCrossingAtSample500) {
    collect({"--set", "TriggerMode=1", "--set", "TriggerChannel=7", "--set", "TriggerLevel=0.5"});
    const auto file = readLmbFile(folder / "Trial0001.lmb");
    ASSERT_TRUE(file);
    const auto lead = file.value().samples.floats(7);
    EXPECT_LT(lead[499], 0.5F);
    EXPECT_GE(lead[500], 0.5F);
    expectScans("Trial0001.lmb", 112); // the heart's first beat after half a second
}

} // namespace
} // namespace tavex2::test
