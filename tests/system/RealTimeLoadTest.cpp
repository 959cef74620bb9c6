#include "acquisition/RunController.h"
#include "platform/AnalogInput.h"
#include "platform/QueueEventLoop.h"
#include "platform/VirtualClock.h"
#include "platform/devices/Simulator.h"
#include "support/Fakes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

namespace tavex2::test {
namespace {

constexpr int channels = 16;
constexpr double rateHz = 100000;

/// The simulated board, whose first channel counts the scans.
class CountingBoard final : public Board {
  public:
    explicit CountingBoard(MillisecondClock& clock) : m_simulator({}, "simulator", clock) {}

    std::atomic<std::int64_t> scansRead = 0;

    const BoardDescription& description() const override { return m_simulator.description(); }
    DaqOutcome check(const StreamConfig& config) const override { return m_simulator.check(config); }
    DaqOutcome start(const StreamConfig& config) override {
        scansRead = 0;
        return m_simulator.start(config);
    }
    BoardRead read(std::span<double> interleaved) override {
        const BoardRead result = m_simulator.read(interleaved);
        for (std::int64_t i = 0; i < result.scans; ++i)
            interleaved[static_cast<std::size_t>(i * channels)] = static_cast<double>(scansRead + i) * 1e-6;
        scansRead += result.scans;
        return result;
    }
    void stop() override { m_simulator.stop(); }
    void writeDigital(std::uint8_t value) override { m_simulator.writeDigital(value); }

  private:
    Simulator m_simulator;
};

/// A clock whose milliseconds pass only when the board has been read up to the present one, give or take a buffer, so
/// that the machine's load plays no part. Whoever holds the acquisition up waits here in vain.
class BoardsTime {
  public:
    BoardsTime(VirtualClock& clock, const CountingBoard& board) : m_clock(clock), m_board(board) {}

    /// Lets milliseconds pass; False when the board was not read any more.
    bool pass(int milliseconds) {
        constexpr std::int64_t bufferScans = 2000; // 20 ms
        for (int i = 0; i < milliseconds; ++i) {
            m_clock.waitForNextMillisecond();
            const auto due =
                static_cast<std::int64_t>(static_cast<double>(m_clock.milliseconds() - m_started) * rateHz / 1000);
            const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(20);
            while (m_board.scansRead < due - bufferScans) {
                if (std::chrono::steady_clock::now() > giveUp) return false;
                std::this_thread::sleep_for(std::chrono::microseconds(50));
            }
        }
        return true;
    }
    void begin() { m_started = m_clock.milliseconds(); }

  private:
    VirtualClock& m_clock;
    const CountingBoard& m_board;
    std::int64_t m_started = 0;
};

TEST(RealTimeLoadTest, ASlowWindowNeverHoldsTheBoardUpAndSeesTheNewestScans) {
    VirtualClock clock;
    QueueEventLoop events(clock);
    BoardList boards;
    auto made = std::make_unique<CountingBoard>(clock);
    CountingBoard& board = *made;
    BoardsTime time(clock, board);
    boards.add(std::move(made));
    AnalogInput input(boards, events);
    FakeDigitalOutput digital(clock);
    FakeMessages messages;
    FakeSound sound;
    FakeRunView view;
    FakeSink sink;
    ProgramState state;
    state.settings.sampling.Channels.assign("0:15");
    state.settings.sampling.Rate = static_cast<std::int32_t>(rateHz);
    state.settings.sampling.Duration = 1.0F;
    RunController run(state, {.analogInput = input,
                              .digitalOutput = digital,
                              .clock = clock,
                              .events = events,
                              .messages = messages,
                              .sound = sound,
                              .view = view,
                              .sink = sink,
                              .random = [] { return 0.0; },
                              .toneFile = {}});
    std::vector<AnalogBlock> blocks;
    std::int64_t oldestShown = 0; // scans between the newest one that was shown and what was read by then
    bool read = true;
    const auto shown = input.onData;
    input.onData = [&](const AnalogBlock& block) {
        oldestShown = std::max(oldestShown, board.scansRead - block.firstScan - block.samples->samples());
        shown(block);
        blocks.push_back(block);
        for (int i = 0; i < 80 && read; ++i) { // a redraw that takes long, for the board and for the machine
            read = time.pass(1);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    };

    run.mnuRealTime_Click();
    time.begin();
    const auto fullWindows = [&] {
        return std::ranges::count_if(blocks, [](const AnalogBlock& each) { return each.samples->samples() > 100000; });
    };
    while (read && fullWindows() < 5 && board.scansRead < 10'000'000) {
        read = time.pass(1);
        (void)events.runUntil([] { return false; }, std::chrono::milliseconds(0)); // what has been posted
    }
    run.Stop();

    EXPECT_TRUE(read) << "the board was held up";
    EXPECT_TRUE(messages.shown.empty()) << messages.shown.front().text;
    ASSERT_GE(fullWindows(), 5);
    std::int64_t newest = 0;
    for (const AnalogBlock& block : blocks) {
        const std::int64_t samples = block.samples->samples();
        ASSERT_LE(samples, 100001);
        ASSERT_EQ(block.samples->channels(), channels);
        EXPECT_GT(block.firstScan + samples, newest) << "a later block shows later scans";
        newest = block.firstScan + samples;
        for (std::int64_t i = 0; i < samples; ++i) // every scan is there, in its place
            ASSERT_DOUBLE_EQ(block.samples->at(0, i), static_cast<double>(block.firstScan + i) * 1e-6);
    }
    EXPECT_EQ(blocks.back().samples->samples(), 100001) << "the window is one trial long";
    // A block that came while another one was drawn is as old as that drawing; no queue of older ones builds up.
    EXPECT_LT(oldestShown, static_cast<std::int64_t>(0.2 * rateHz)) << "what is shown is what is now";
    EXPECT_FALSE(state.DataPresent());
}

} // namespace
} // namespace tavex2::test
