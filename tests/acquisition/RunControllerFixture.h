#pragma once

#include "acquisition/RunController.h"
#include "support/Fakes.h"

#include <gtest/gtest.h>

namespace tavex2::test {

/// A run controller among in-memory twins of everything that it works with. Trials have 11 samples and no pulses.
class RunControllerTest : public testing::Test {
  protected:
    RunControllerTest() {
        state.settings.sampling.Rate = 100;
        state.settings.sampling.Duration = 0.1F; // 11 samples
        state.settings.sampling.DIOMask = 0;
    }

    void collectAndDeliver(double base) {
        run.Collect();
        input.deliver(base);
    }

    ProgramState state;
    FakeClock clock;
    FakeEvents events{clock};
    FakeMessages messages;
    FakeSound sound;
    FakeDigitalOutput dio{clock};
    FakeAnalogInput input;
    FakeRunView view;
    FakeSink sink;
    double nextRandom = 0;
    RunController run{state, services()};

    RunServices services() {
        return {.analogInput = input,
                .digitalOutput = dio,
                .clock = clock,
                .events = events,
                .messages = messages,
                .sound = sound,
                .view = view,
                .sink = sink,
                .random = [this] { return nextRandom; },
                .toneFile = "tone.wav"};
    }
};

} // namespace tavex2::test
