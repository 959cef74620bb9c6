#include "platform/devices/Simulator.h"

#include "platform/VirtualClock.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numeric>
#include <thread>

namespace tavex2::test {
namespace {

using testing::HasSubstr;
using Fault = SimulatorOptions::Fault;

StreamConfig stream(std::vector<int> channels, double rateHz = 1000, double lower = -10, double upper = 10) {
    return {.channels = std::move(channels), .rateHz = rateHz, .lowerVolts = lower, .upperVolts = upper};
}

std::vector<double> readScans(Simulator& board, std::size_t channels, const std::vector<std::size_t>& pieces) {
    std::vector<double> all;
    for (const std::size_t size : pieces) {
        std::vector<double> piece(size * channels);
        const BoardRead read = board.read(piece);
        all.insert(all.end(), piece.begin(), piece.begin() + read.scans * static_cast<std::ptrdiff_t>(channels));
    }
    return all;
}

std::vector<double> readAll(const SimulatorOptions& options, const StreamConfig& config,
                            const std::vector<std::size_t>& pieces, int starts = 1) {
    VirtualClock clock;
    clock.setFreeRunning(true);
    Simulator board(options, "simulator", clock);
    std::vector<double> samples;
    for (int i = 0; i < starts; ++i) {
        EXPECT_TRUE(board.start(config).ok());
        samples = readScans(board, config.channels.size(), pieces);
        board.stop();
    }
    return samples;
}

TEST(SimulatorTest, TheSameSeedGivesTheSameSamplesHoweverTheyAreRead) {
    const StreamConfig config = stream({0, 1, 2, 3, 4, 5, 6, 7, 60});
    const auto whole = readAll({}, config, {1000});
    EXPECT_EQ(readAll({}, config, {1, 999}), whole);
    EXPECT_EQ(readAll({}, config, {333, 333, 334}), whole);
    EXPECT_NE(readAll({.seed = 7}, config, {1000}), whole);
}

TEST(SimulatorTest, EachStartHasNoiseOfItsOwnAndTheSameSignal) {
    const StreamConfig config = stream({0});
    const auto first = readAll({}, config, {1000}, 1);
    const auto second = readAll({}, config, {1000}, 2);
    EXPECT_NE(first, second);
    for (std::size_t i = 0; i < first.size(); ++i)
        EXPECT_NEAR(first[i], second[i], 0.3);
}

TEST(SimulatorTest, EveryKindOfInputMovesAndStaysInRange) {
    for (int input = 0; input < 61; ++input) {
        const auto samples = readAll({}, stream({input}), {4000});
        const auto [lowest, highest] = std::minmax_element(samples.begin(), samples.end());
        EXPECT_GT(*highest - *lowest, 0.5) << input;
        EXPECT_GT(*lowest, -10.0) << input;
        EXPECT_LT(*highest, 10.0) << input;
    }
}

TEST(SimulatorTest, QuantisesTo16BitsOverTheLimitsAndClips) {
    const double step = 2.0 / 65536;
    const auto samples = readAll({}, stream({0}, 1000, -1, 1), {1000});
    for (const double volts : samples) {
        const double code = (volts + 1) / step;
        EXPECT_NEAR(code, std::nearbyint(code), 1e-6);
        EXPECT_GE(volts, -1.0);
        EXPECT_LE(volts, 1.0 - step);
    }
    EXPECT_EQ(*std::ranges::max_element(samples), 1.0 - step) << "the sine of 2 V is clipped";
    EXPECT_EQ(*std::ranges::min_element(samples), -1.0);
}

TEST(SimulatorTest, AStimulusPulseShowsInTheLoopedInputsToTheSample) {
    VirtualClock clock;
    Simulator board({}, "simulator", clock);
    board.writeDigital(0);
    ASSERT_TRUE(board.start(stream({61, 63})).ok());
    std::vector<double> scans(2 * 8);
    std::jthread acquisition([&] { (void)board.read(scans); });
    for (int ms = 0; ms < 9; ++ms) { // line 0 from 3 to 4 ms, line 2 from 5 ms on
        if (ms == 3) board.writeDigital(0b001);
        if (ms == 4) board.writeDigital(0);
        if (ms == 5) board.writeDigital(0b100);
        clock.waitForNextMillisecond();
    }
    acquisition.join();
    for (std::size_t scan = 0; scan < 8; ++scan) {
        EXPECT_NEAR(scans[2 * scan], scan == 3 ? 5.0 : 0.0, 1e-3) << scan;
        EXPECT_NEAR(scans[2 * scan + 1], scan >= 5 ? 5.0 : 0.0, 1e-3) << scan;
    }
}

TEST(SimulatorTest, FailsAsItIsTold) {
    VirtualClock clock;
    clock.setFreeRunning(true);
    Simulator refusing({.fault = Fault::RefuseConfiguration}, "", clock);
    EXPECT_EQ(refusing.check(stream({0})).status, DaqStatus::DeviceRefused);
    Simulator closed({.fault = Fault::RefuseToOpen}, "", clock);
    EXPECT_EQ(closed.start(stream({0})).status, DaqStatus::DeviceUnavailable);
    for (const auto& [fault, status] :
         {std::pair{Fault::Overrun, DaqStatus::Overrun}, std::pair{Fault::Vanish, DaqStatus::DeviceVanished}}) {
        Simulator board({.fault = fault, .faultAfterScans = 25}, "", clock);
        ASSERT_TRUE(board.start(stream({0, 1})).ok());
        std::vector<double> scans(2 * 20);
        EXPECT_EQ(board.read(scans).status, DaqStatus::Ok);
        const BoardRead read = board.read(scans);
        EXPECT_EQ(read.scans, 5) << "the scans before the fault are delivered";
        EXPECT_EQ(read.status, status);
        EXPECT_EQ(board.read(scans).scans, 0);
    }
}

TEST(SimulatorOptionsTest, ReadsSeedInputsAndFaults) {
    const auto options = parseSimulatorOptions("seed=7,inputs=16,fail=vanish@2000");
    ASSERT_TRUE(options);
    EXPECT_EQ(options.value().seed, 7U);
    EXPECT_EQ(options.value().inputs, 16);
    EXPECT_EQ(options.value().fault, Fault::Vanish);
    EXPECT_EQ(options.value().faultAfterScans, 2000);
    EXPECT_EQ(parseSimulatorOptions("").value().inputs, 64);
    EXPECT_EQ(parseSimulatorOptions("fail=overrun@0").value().fault, Fault::Overrun);
}

TEST(SimulatorOptionsTest, NamesTheOptionThatItDoesNotKnow) {
    for (const char* text : {"speed=3", "seed=x", "inputs=65", "inputs=2", "fail=", "fail=vanish", "fail=vanish@-1",
                             "fail=melt@3", "fail=refuse,fail=bogus", "seed=7,,inputs=8", "seed"}) {
        const auto options = parseSimulatorOptions(text);
        ASSERT_FALSE(options) << text;
        EXPECT_THAT(options.error().text, HasSubstr("no option"));
    }
}

} // namespace
} // namespace tavex2::test
