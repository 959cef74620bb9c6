#include "acquisition/RunController.h"
#include "platform/AnalogInput.h"
#include "platform/QueueEventLoop.h"
#include "platform/SteadyClock.h"
#include "platform/devices/Simulator.h"
#include "support/Fakes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace tavex2::test {
namespace {

constexpr int channels = 16;
constexpr double rateHz = 100000;

/// The simulated board behind a buffer of limited size, as hardware has one: who comes late for his scans gets an
/// overrun. Its first channel counts the scans.
class BufferedBoard final : public Board {
  public:
    BufferedBoard(MillisecondClock& clock) : m_simulator({}, "simulator", clock), m_clock(clock) {}

    std::atomic<std::int64_t> scansRead = 0;

    const BoardDescription& description() const override { return m_simulator.description(); }
    DaqOutcome check(const StreamConfig& config) const override { return m_simulator.check(config); }
    DaqOutcome start(const StreamConfig& config) override {
        scansRead = 0;
        m_start = m_clock.now();
        return m_simulator.start(config);
    }
    BoardRead read(std::span<double> interleaved) override {
        const double seconds = std::chrono::duration<double>(m_clock.now() - m_start).count();
        constexpr double bufferSeconds = 0.3;
        if (seconds * rateHz - static_cast<double>(scansRead) > bufferSeconds * rateHz)
            return {.scans = 0, .status = DaqStatus::Overrun, .context = "Buffer full"};
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
    MillisecondClock& m_clock;
    std::chrono::nanoseconds m_start{0};
};

TEST(RealTimeLoadTest, ASlowWindowNeverHoldsTheBoardUpAndSeesTheNewestScans) {
    SteadyClock clock;
    QueueEventLoop events(clock);
    BoardList boards;
    auto made = std::make_unique<BufferedBoard>(clock);
    BufferedBoard& board = *made;
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
    const auto shown = input.onData;
    input.onData = [&](const AnalogBlock& block) {
        shown(block);
        blocks.push_back(block);
        std::this_thread::sleep_for(std::chrono::milliseconds(80)); // a redraw that takes long
    };

    run.mnuRealTime_Click();
    ASSERT_TRUE(
        events.runUntil([&] { return board.scansRead > 150000 || !messages.shown.empty(); }, std::chrono::seconds(30)));
    run.Stop();

    EXPECT_TRUE(messages.shown.empty()) << "no overrun: " << messages.shown.front().text;
    ASSERT_GE(blocks.size(), 5U);
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
    EXPECT_GT(newest, board.scansRead - 50000) << "what is shown is what is now";
    EXPECT_FALSE(state.DataPresent());
}

} // namespace
} // namespace tavex2::test
