#include "acquisition/RunControllerFixture.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// The stimuli around a trial: pulses on the digital lines and the tone.
class StimulusTest : public RunControllerTest {};

TEST_F(StimulusTest, PulsesEachLineForOneMillisecondAtItsLatency) {
    state.settings.sampling.DIOMask = 0b101;
    state.settings.sampling.DIOLatency = {3, 0, 5, 0, 0, 0, 0, 0};
    run.Collect();
    // The first write clears the port; the collection then waits for the next millisecond and starts.
    EXPECT_THAT(dio.writes, ElementsAre(Pair(0, 0), Pair(1, 0), Pair(2, 0), Pair(3, 0), Pair(4, 1), Pair(5, 0),
                                        Pair(6, 4), Pair(7, 0)));
}

TEST_F(StimulusTest, LinesDueInTheSameMillisecondPulseTogether) {
    state.settings.sampling.DIOMask = 0b111;
    state.settings.sampling.DIOLatency = {1, 1, 1, 0, 0, 0, 0, 0};
    run.Collect();
    EXPECT_THAT(dio.writes, ElementsAre(Pair(0, 0), Pair(1, 0), Pair(2, 7), Pair(3, 0)));
}

TEST_F(StimulusTest, RepeatsThePulsesOncePerTrial) {
    state.settings.sampling.DIOMask = 1;
    state.settings.sampling.DIOLatency[0] = 2;
    state.settings.sampling.Repeat = 2;
    run.Collect();
    std::vector<std::int64_t> risen;
    for (const auto& [ms, value] : dio.writes)
        if (value == 1) risen.push_back(ms);
    EXPECT_THAT(risen, ElementsAre(3, 103)); // 100 ms of trial between them
    EXPECT_EQ(dio.writes.back().second, 0);
}

TEST_F(StimulusTest, IgnoresMaskBitsAboveTheThreeLines) {
    state.settings.sampling.DIOMask = 0b11111000;
    run.Collect();
    EXPECT_THAT(dio.writes, ElementsAre(Pair(0, 0)));
    EXPECT_TRUE(run.busy());
}

TEST_F(StimulusTest, WritesNoPortWhenTheBoardHasNoLinesBeforeTheCollection) {
    dio.lineCount = 0;
    run.Collect();
    EXPECT_THAT(dio.writes, IsEmpty());
}

TEST_F(StimulusTest, PlaysTheToneBeforeTheTrialOnlyWithADevice) {
    state.settings.sound.SoundBefore = true;
    run.Collect();
    EXPECT_THAT(sound.played, IsEmpty()) << "SoundAvailable is False";
    input.deliver(0);
    state.settings.sound.SoundAvailable = true;
    collectAndDeliver(0);
    EXPECT_EQ(sound.played.size(), 1U);
    sound.devices = 0; // a setup file may claim a device that is not there
    collectAndDeliver(0);
    EXPECT_EQ(sound.played.size(), 1U);
}

TEST_F(StimulusTest, PlaysTheToneAfterOneTrialInN) {
    state.settings.sound.SoundAvailable = true;
    state.settings.sound.SoundAfter = true;
    state.settings.trigger.RandomRatio = 2;
    nextRandom = 0.49; // Int(0.98) + 1 = 1
    collectAndDeliver(0);
    EXPECT_EQ(sound.played.size(), 1U);
    nextRandom = 0.5; // Int(1.0) + 1 = 2
    collectAndDeliver(0);
    EXPECT_EQ(sound.played.size(), 1U);
    state.settings.trigger.RandomRatio = 0; // on every trial
    nextRandom = 0.99;
    collectAndDeliver(0);
    EXPECT_EQ(sound.played.size(), 2U);
}

} // namespace
} // namespace tavex2::test
