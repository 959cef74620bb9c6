#include "platform/devices/Recording.h"

#include "platform/VirtualClock.h"
#include "platform/devices/SndfileSignal.h"
#include "support/RecordingFile.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <thread>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class RecordingTest : public testing::Test {
  protected:
    RecordingTest() {
        // Two channels of four scans.
        writeWave(folder / "two.wav", 2, 500, {0, 100, 1, -100, 2, 32767, 3, -32768});
        clock.setFreeRunning(true);
    }

    std::unique_ptr<Recording> open() {
        auto signal = openSndfileSignal(folder / "two.wav");
        EXPECT_TRUE(signal);
        return std::make_unique<Recording>(std::move(signal).value(), "recording:two.wav", clock);
    }

    std::string refusal(const std::filesystem::path& path, ErrorKind kind) {
        const auto signal = openSndfileSignal(path);
        if (signal) return "accepted";
        EXPECT_EQ(signal.error().kind, kind);
        EXPECT_THAT(signal.error().text, HasSubstr(path.string()));
        return signal.error().text;
    }

    TemporaryFolder folder;
    VirtualClock clock;
};

TEST_F(RecordingTest, DescribesItselfByItsFile) {
    const auto board = open();
    EXPECT_EQ(board->description().name, "Recording two.wav");
    EXPECT_EQ(board->description().inputs, 2);
    EXPECT_EQ(board->description().lowestRateHz, 500);
    EXPECT_EQ(board->description().highestRateHz, 500);
}

TEST_F(RecordingTest, AFullScaleSampleIsTenVoltsAndTheFileRepeats) {
    const auto board = open();
    ASSERT_TRUE(board->start({.channels = {1, 0}, .rateHz = 500}).ok());
    std::vector<double> scans(12);
    const BoardRead read = board->read(scans);
    EXPECT_EQ(read.scans, 6);
    EXPECT_EQ(read.status, DaqStatus::Ok);
    const auto volts = [](int sample) { return sample / 32768.0 * 10.0; };
    EXPECT_THAT(scans, ElementsAre(volts(100), volts(0), volts(-100), volts(1), volts(32767), volts(2), -10.0, volts(3),
                                   volts(100), volts(0), volts(-100), volts(1)));
}

TEST_F(RecordingTest, HowItIsReadMakesNoDifferenceAndEachStartBeginsAtTheFirstScan) {
    const auto board = open();
    std::vector<double> whole(2 * 11);
    ASSERT_TRUE(board->start({.channels = {0, 1}, .rateHz = 500}).ok());
    (void)board->read(whole);
    board->stop();
    std::vector<double> pieces;
    ASSERT_TRUE(board->start({.channels = {0, 1}, .rateHz = 500}).ok());
    for (const std::size_t size : {1U, 3U, 5U, 2U}) {
        std::vector<double> piece(2 * size);
        EXPECT_EQ(board->read(piece).scans, static_cast<std::int64_t>(size));
        pieces.insert(pieces.end(), piece.begin(), piece.end());
    }
    EXPECT_EQ(pieces, whole);
}

TEST_F(RecordingTest, StopEndsAWaitingRead) {
    clock.setFreeRunning(false); // its time never comes
    const auto board = open();
    ASSERT_TRUE(board->start({.channels = {0}, .rateHz = 500}).ok());
    std::jthread stopping([&] { board->stop(); });
    std::vector<double> scans(4);
    EXPECT_EQ(board->read(scans).scans, 0);
}

TEST_F(RecordingTest, SaysWhyAFileCannotBePlayed) {
    refusal(folder / "missing.wav", ErrorKind::NotFound);
    refusal(folder.path(), ErrorKind::ReadFailed);
    std::ofstream(folder / "text.wav") << "this is no sound";
    EXPECT_THAT(refusal(folder / "text.wav", ErrorKind::BadFormat), HasSubstr("not a sound file"));
    std::ofstream(folder / "empty.wav").flush();
    refusal(folder / "empty.wav", ErrorKind::BadFormat);
    writeWave(folder / "silent.wav", 1, 100, {});
    EXPECT_THAT(refusal(folder / "silent.wav", ErrorKind::BadFormat), HasSubstr("no samples"));
}

} // namespace
} // namespace tavex2::test
