#include "acquisition/RunControllerFixture.h"
#include "acquisition/StartCondition.h"

#include <gmock/gmock.h>

#include <regex>
#include <string>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What a collected trial tells of how it was taken.
class TrialRecordTest : public RunControllerTest {
  protected:
    /// Confirms a trigger with 5 of the 11 samples before it.
    void awaitTrigger() {
        state.flags.TriggerEnabled = true;
        state.settings.trigger.TriggerChannel = "1";
        state.settings.trigger.Pretrigger = 50;
        input.config.start = startConditionFor(state.settings, true);
    }

    void arrive(int repeat, bool last, std::int64_t firstScan) {
        input.onData({FakeAnalogInput::block(2, 11, 0), repeat, last, firstScan});
    }

    /// Between two moments of one hour, as a record writes them.
    static int millisecondsBetween(const std::string& from, const std::string& to) {
        constexpr int anHour = 3600000;
        return (millisecondsOfHour(to) - millisecondsOfHour(from) + anHour) % anHour;
    }

  private:
    static int millisecondsOfHour(const std::string& moment) {
        return std::stoi(moment.substr(14, 2)) * 60000 + std::stoi(moment.substr(17, 2)) * 1000 +
               std::stoi(moment.substr(20, 3));
    }
};

TEST_F(TrialRecordTest, ATrialCarriesWhenWhereAndHowItWasTaken) {
    state.settings.sampling.DIOMask = 0b10;
    state.settings.sampling.DIOLatency[1] = 7;
    state.header.Labels[1].assign("V2");
    state.comments[0].assign("quiet");
    awaitTrigger();
    run.Collect();
    state.settings.trigger.TriggerLevel = 3; // too late for this one
    input.deliver(1.0);
    const Trial& trial = *state.trials.CurrentTrial;
    EXPECT_EQ(trial.record.source, "Device: Fake board");
    // Of the standard library: the test library's own expressions know less on Windows.
    const std::regex moment(R"(\d{4}-\d{2}-\d{2}T\d{2}:\d{2}:\d{2}\.\d{3}[+-]\d{2}:\d{2})");
    EXPECT_TRUE(std::regex_match(trial.record.start, moment)) << trial.record.start;
    EXPECT_EQ(trial.record.triggerSample, 5);
    ASSERT_TRUE(trial.record.trigger);
    EXPECT_EQ(trial.record.trigger->TriggerLevel, 1.0F);
    EXPECT_THAT(trial.record.pulses, ElementsAre(GivenPulse{.line = 1, .milliseconds = 7}));
    EXPECT_EQ(trial.header.Labels[1].trimmed(), "V2");
    EXPECT_EQ(trial.comments[0].trimmed(), "quiet");
    EXPECT_EQ(trial.sampling.UpperVolts, 10.0F);
}

TEST_F(TrialRecordTest, AnImmediateTrialHasNoTrigger) {
    collectAndDeliver(1.0);
    EXPECT_FALSE(state.trials.CurrentTrial->record.trigger);
    EXPECT_FALSE(state.trials.CurrentTrial->record.triggerSample);
    EXPECT_THAT(state.trials.CurrentTrial->record.pulses, IsEmpty());
}

TEST_F(TrialRecordTest, ARepeatStartsWhenItsFirstScanWasTaken) {
    state.settings.sampling.Repeat = 2;
    run.Collect();
    arrive(0, false, 0);
    const std::string first = state.trials.CurrentTrial->record.start;
    arrive(1, true, 1100); // at 100 Hz
    EXPECT_EQ(millisecondsBetween(first, state.trials.CurrentTrial->record.start), 11000);
}

TEST_F(TrialRecordTest, TheTimesOfARepeatsPulsesCountFromItsOwnStart) {
    state.settings.sampling.Repeat = 2;
    state.settings.sampling.DIOMask = 0b101;
    state.settings.sampling.DIOLatency = {3, 0, 5, 0, 0, 0, 0, 0};
    run.Collect();
    for (const int repeat : {0, 1}) {
        arrive(repeat, repeat == 1, 11 * repeat);
        EXPECT_THAT(state.trials.CurrentTrial->record.pulses,
                    ElementsAre(GivenPulse{.line = 0, .milliseconds = 3}, GivenPulse{.line = 2, .milliseconds = 5}));
    }
}

TEST_F(TrialRecordTest, OfTriggeredRepeatsOnlyTheFirstHasATriggerSample) {
    awaitTrigger();
    state.settings.sampling.Repeat = 2;
    run.Collect();
    arrive(0, false, 0);
    EXPECT_EQ(state.trials.CurrentTrial->record.triggerSample, 5);
    arrive(1, true, 11);
    EXPECT_TRUE(state.trials.CurrentTrial->record.trigger);
    EXPECT_FALSE(state.trials.CurrentTrial->record.triggerSample) << "the second follows without a trigger of its own";
}

TEST_F(TrialRecordTest, ThePartOfARepeatThatAnErrorLeavesHasTheRecordOfThatRepeat) {
    state.settings.sampling.Repeat = 2;
    run.Collect();
    arrive(0, false, 0);
    const std::string first = state.trials.CurrentTrial->record.start;
    input.onError(
        {.code = -10010, .context = "scan 5.", .arrived = FakeAnalogInput::block(2, 5, 4.0), .firstScan = 11});
    const Trial& part = *state.trials.CurrentTrial;
    EXPECT_EQ(part.name, "Trial0001-r2-partial");
    EXPECT_EQ(part.sampling.NumSamples, 5);
    EXPECT_EQ(part.record.source, "Device: Fake board");
    EXPECT_EQ(millisecondsBetween(first, part.record.start), 110);
    EXPECT_EQ(state.notice, "Trial0001 was not saved; the next repeat has taken its place.");
}

TEST_F(TrialRecordTest, ATrialDoesNotCarryTheTitleOfTheFileThatWasOpenedBefore) {
    state.header.Title.assign("Trial0099  somewhere else");
    collectAndDeliver(1.0);
    EXPECT_EQ(state.trials.CurrentTrial->header.Title.trimmed(), "");
}

} // namespace
} // namespace tavex2::test
