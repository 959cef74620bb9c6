#include "acquisition/RunController.h"
#include "platform/AnalogInput.h"
#include "platform/DigitalOutput.h"
#include "platform/QueueEventLoop.h"
#include "platform/SteadyClock.h"
#include "platform/VirtualClock.h"
#include "platform/devices/Simulator.h"
#include "support/Fakes.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

/// A collection on the simulated board whose three digital lines are wired back to three of its inputs.
class StimulusLoopback {
  public:
    explicit StimulusLoopback(MillisecondClock& clock) : m_clock(clock) {
        m_boards.add(std::make_unique<Simulator>(SimulatorOptions{}, "simulator", clock));
        SamplingSettings& sampling = state.settings.sampling;
        sampling.Channels.assign("61:63");
        sampling.Rate = 10000;
        sampling.Duration = 0.1F;
        sampling.DIOMask = 0b111;
        sampling.DIOLatency = {20, 35, 35, 0, 0, 0, 0, 0};
    }

    /// Milliseconds from the trial's start to the rise of each line, and for how long it was high; one pulse each.
    struct Pulse {
        double riseMs = -1;
        double lengthMs = 0;
    };
    std::array<Pulse, 3> collect(const std::function<void()>& afterStart = [] {}) {
        AnalogInput input(m_boards, m_events);
        DigitalOutput lines(input);
        RunController run(state, {.analogInput = input,
                                  .digitalOutput = lines,
                                  .clock = m_clock,
                                  .events = m_events,
                                  .messages = m_messages,
                                  .sound = m_sound,
                                  .view = m_view,
                                  .sink = m_sink,
                                  .random = [] { return 0.0; },
                                  .toneFile = {}});
        run.Collect();
        afterStart();
        EXPECT_TRUE(m_events.runUntil([&] { return !run.busy(); }, std::chrono::seconds(20)));
        EXPECT_TRUE(m_messages.shown.empty());
        std::array<Pulse, 3> pulses;
        for (int line = 0; line < 3; ++line)
            for (std::int64_t i = 0; i < state.trials.CurrentTrial->samples->samples(); ++i)
                if (state.trials.CurrentTrial->samples->at(line, i) > 2.5) {
                    Pulse& pulse = pulses[static_cast<std::size_t>(line)];
                    if (pulse.riseMs < 0) pulse.riseMs = 0.1 * static_cast<double>(i);
                    pulse.lengthMs += 0.1;
                }
        return pulses;
    }

    ProgramState state;

  private:
    MillisecondClock& m_clock;
    BoardList m_boards;
    QueueEventLoop m_events{m_clock};
    FakeMessages m_messages;
    FakeSound m_sound;
    FakeRunView m_view;
    FakeSink m_sink;
};

TEST(StimulusLoopbackTest, AtVirtualTimeEachPulseIsOneMillisecondAtItsLatency) {
    VirtualClock clock;
    StimulusLoopback loopback(clock);
    const auto pulses = loopback.collect([&] { clock.setFreeRunning(true); });
    EXPECT_NEAR(pulses[0].riseMs, 20.0, 1e-6);
    EXPECT_NEAR(pulses[1].riseMs, 35.0, 1e-6);
    EXPECT_NEAR(pulses[2].riseMs, 35.0, 1e-6);
    for (const auto& pulse : pulses)
        EXPECT_NEAR(pulse.lengthMs, 1.0, 1e-6);
}

TEST(StimulusLoopbackTest, AtRealTimeEachLinePulsesOnceAndNeverEarly) {
    SteadyClock clock;
    FakeEvents events(clock);
    FakeAnalogInput input;
    FakeDigitalOutput lines(clock);
    FakeMessages messages;
    FakeSound sound;
    FakeRunView view;
    FakeSink sink;
    ProgramState state;
    state.settings.sampling.DIOMask = 0b111;
    state.settings.sampling.DIOLatency = {20, 35, 35, 0, 0, 0, 0, 0};
    std::int64_t startMs = 0;
    input.whenStarted = [&] { startMs = clock.milliseconds(); };
    RunController run(state, {.analogInput = input,
                              .digitalOutput = lines,
                              .clock = clock,
                              .events = events,
                              .messages = messages,
                              .sound = sound,
                              .view = view,
                              .sink = sink,
                              .random = [] { return 0.0; },
                              .toneFile = {}});
    run.Collect();
    for (std::size_t line = 0; line < 3; ++line) {
        std::vector<std::int64_t> risenMs;
        bool high = false;
        for (const auto& [ms, value] : lines.writes) {
            const bool now = ((value >> line) & 1) != 0;
            if (now && !high) risenMs.push_back(ms - startMs);
            high = now;
        }
        ASSERT_EQ(risenMs.size(), 1U) << "line " << line;
        EXPECT_GE(risenMs.front(), state.settings.sampling.DIOLatency[line]) << "line " << line;
        EXPECT_FALSE(high) << "line " << line;
    }
}

} // namespace
} // namespace tavex2::test
