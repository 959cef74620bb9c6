#include "platform/AnalogInput.h"

#include "platform/DigitalOutput.h"
#include "platform/FakeBoard.h"
#include "platform/QueueEventLoop.h"
#include "platform/SteadyClock.h"

#include <gmock/gmock.h>

#include <limits>
#include <set>
#include <string_view>
#include <thread>

namespace tavex2::test {
namespace {

using testing::HasSubstr;

class AnalogInputTest : public testing::Test {
  protected:
    AnalogInputTest() {
        auto made = std::make_unique<FakeBoard>();
        board = made.get();
        boards.add(std::move(made));
        input.config = {.channelList = "0:1",
                        .scanRateHz = 1000,
                        .totalScans = 100,
                        .upperVolts = 10,
                        .lowerVolts = -10,
                        .chunked = false,
                        .chunkScans = 100,
                        .start = {},
                        .end = EndCondition::AfterTotalScans};
        input.onData = [this](const AnalogBlock& block) {
            EXPECT_EQ(std::this_thread::get_id(), here);
            blocks.push_back(block);
            if (whenDelivered) whenDelivered();
        };
        input.onError = [this](const AnalogError& error) { errors.push_back(error); };
        input.onProgress = [this](const AnalogProgress& each) { progress.push_back(each); };
    }

    bool run(const std::function<bool()>& done) { return events.runUntil(done, std::chrono::seconds(20)); }
    bool runToEnd() {
        return run([this] { return !input.running(); });
    }
    std::string refusal() {
        const int code = input.Configure();
        EXPECT_NE(code, 0);
        const std::string text = std::to_string(code) + " " + input.describe(code);
        EXPECT_NE(input.Start(), 0) << "what was refused must not start";
        return text;
    }

    const std::thread::id here = std::this_thread::get_id();
    BoardList boards;
    FakeBoard* board;
    SteadyClock clock;
    QueueEventLoop events{clock};
    AnalogInput input{boards, events};
    std::vector<AnalogBlock> blocks;
    std::vector<AnalogError> errors;
    std::vector<AnalogProgress> progress;
    std::function<void()> whenDelivered;
};

TEST_F(AnalogInputTest, DeliversOneBlockOnTheThreadOfItsUserAndStopsTheBoard) {
    ASSERT_EQ(input.Configure(), 0);
    EXPECT_EQ(input.numChannels(), 2);
    EXPECT_EQ(input.totalScans(), 100);
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(runToEnd());
    ASSERT_EQ(blocks.size(), 1U);
    const TrialArray& trial = *blocks[0].samples;
    EXPECT_TRUE(blocks[0].last);
    EXPECT_EQ(trial.rank(), 2);
    EXPECT_EQ(trial.channels(), 2);
    EXPECT_EQ(trial.samples(), 100);
    EXPECT_EQ(trial.at(0, 7), 0.007);
    EXPECT_EQ(trial.at(1, 99), 1.099);
    input.Stop();
    EXPECT_GE(board->stops, 1);
    EXPECT_EQ(board->scansRead, 100) << "nothing is read beyond what is needed";
}

TEST_F(AnalogInputTest, OneChannelGivesAOneDimensionalArray) {
    input.config.channelList = "3";
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(runToEnd());
    EXPECT_EQ(blocks.at(0).samples->rank(), 1);
    EXPECT_EQ(blocks.at(0).samples->at(0, 0), 3.0);
}

TEST_F(AnalogInputTest, RepeatsFollowEachOtherWithoutAMissingSample) {
    board->sample = [](int, std::int64_t scan) { return 1e-4 * static_cast<double>(scan); };
    input.config.chunked = true;
    input.config.chunkScans = 33;
    input.config.totalScans = 99;
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(runToEnd());
    ASSERT_EQ(blocks.size(), 3U);
    for (int b = 0; b < 3; ++b) {
        EXPECT_EQ(blocks[static_cast<std::size_t>(b)].index, b);
        EXPECT_EQ(blocks[static_cast<std::size_t>(b)].last, b == 2);
        EXPECT_EQ(blocks[static_cast<std::size_t>(b)].firstScan, 33 * b);
        for (std::int64_t i = 0; i < 33; ++i)
            ASSERT_EQ(blocks[static_cast<std::size_t>(b)].samples->at(0, i), 1e-4 * static_cast<double>(b * 33 + i));
    }
    std::vector<std::int64_t> counts;
    for (const AnalogProgress& each : progress)
        if (counts.empty() || counts.back() != each.count) counts.push_back(each.count);
    EXPECT_THAT(counts, testing::ElementsAre(99, 198, 297)) << "repeat in progress x total scans";
}

TEST_F(AnalogInputTest, LimitsTheVoltagesOfABoardThatDoesNot) {
    board->sample = [](int, std::int64_t scan) { return scan % 2 == 0 ? 4.0 : -4.0; };
    input.config.upperVolts = 2.5;
    input.config.lowerVolts = -1.5;
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(runToEnd());
    EXPECT_EQ(blocks.at(0).samples->at(0, 0), 2.5);
    EXPECT_EQ(blocks.at(0).samples->at(0, 1), -1.5);
}

TEST_F(AnalogInputTest, ATriggeredTrialHoldsTheCrossingBehindItsPreTriggerScans) {
    board->sample = [](int input_, std::int64_t scan) {
        return input_ == 1 && scan >= 300 ? 2.0 : 0.001 * static_cast<double>(scan % 100);
    };
    input.config.start = {.type = StartCondition::Type::AnalogLevel,
                          .levelVolts = 1.0,
                          .secondThresholdVolts = 0.9,
                          .channel = "1",
                          .preTriggerScans = 20,
                          .rising = true};
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(runToEnd());
    const TrialArray& trial = *blocks.at(0).samples;
    EXPECT_EQ(trial.at(1, 20), 2.0);
    EXPECT_NEAR(trial.at(1, 19), 0.099, 1e-12); // scan 299
    EXPECT_NEAR(trial.at(0, 0), 0.080, 1e-12);  // scan 280
    EXPECT_EQ(trial.samples(), 100);
    EXPECT_EQ(blocks[0].firstScan, 280);
}

TEST_F(AnalogInputTest, SaysThatItWaitsForTheTriggerAndStopEndsTheWait) {
    board->sample = [](int, std::int64_t) { return 0.0; };
    input.config.start = {.type = StartCondition::Type::AnalogLevel,
                          .levelVolts = 1.0,
                          .secondThresholdVolts = 0.9,
                          .channel = "0",
                          .preTriggerScans = 0,
                          .rising = true};
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(run([this] { return !progress.empty(); }));
    EXPECT_TRUE(progress.front().waitingForTrigger);
    input.Stop();
    EXPECT_FALSE(input.running());
    progress.clear();
    events.runUntil([] { return false; }, std::chrono::milliseconds(0));
    EXPECT_TRUE(progress.empty()) << "nothing of a stopped run arrives";
    EXPECT_TRUE(blocks.empty());
}

TEST_F(AnalogInputTest, EventsOfAStoppedRunDoNotReachTheNextOne) {
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    // The block of this run may be queued already; the run is void all the same.
    input.Stop();
    board->sample = [](int, std::int64_t) { return 9.0; };
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(runToEnd());
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks[0].samples->at(0, 0), 9.0);
}

TEST_F(AnalogInputTest, CanBeStoppedAndStartedAgainFromItsOwnEvent) {
    int starts = 0;
    whenDelivered = [&] {
        input.Stop();
        if (++starts < 3) {
            ASSERT_EQ(input.Start(), 0);
        }
    };
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(run([this] { return blocks.size() == 3; }));
}

TEST_F(AnalogInputTest, AFailingBoardLosesNothingThatHadArrived) {
    for (const DaqStatus status : {DaqStatus::DeviceVanished, DaqStatus::Overrun}) {
        board->lastScan = 42;
        board->endsWith = status;
        errors.clear();
        ASSERT_EQ(input.Configure(), 0);
        ASSERT_EQ(input.Start(), 0);
        ASSERT_TRUE(runToEnd());
        ASSERT_EQ(errors.size(), 1U);
        EXPECT_EQ(errors[0].code, static_cast<int>(status));
        EXPECT_EQ(errors[0].context, "Fake board, after scan 42 of 100.");
        ASSERT_TRUE(errors[0].arrived);
        EXPECT_EQ(errors[0].arrived->samples(), 42);
        EXPECT_EQ(errors[0].arrived->at(1, 41), 1.041);
        EXPECT_THAT(input.describe(errors[0].code), HasSubstr(std::string(daqStatusDescription(errors[0].code))));
    }
    EXPECT_TRUE(blocks.empty());
}

TEST_F(AnalogInputTest, ABoardThatFailsInALaterRepeatHasDeliveredTheEarlierOnes) {
    board->lastScan = 130;
    board->endsWith = DaqStatus::DeviceVanished;
    input.config.chunked = true;
    input.config.totalScans = 300;
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(runToEnd());
    EXPECT_EQ(blocks.size(), 1U);
    EXPECT_EQ(errors.at(0).context, "Fake board, after scan 30 of 100, repeat 2 of 3.");
    EXPECT_EQ(errors.at(0).arrived->samples(), 30);
    EXPECT_EQ(errors.at(0).firstScan, 100);
}

TEST_F(AnalogInputTest, WithoutAScanThereIsNothingToKeep) {
    board->lastScan = 0;
    board->endsWith = DaqStatus::DeviceVanished;
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(runToEnd());
    EXPECT_FALSE(errors.at(0).arrived);
}

TEST_F(AnalogInputTest, RefusesWhatTheBoardCannotDoAndSaysWhatItCan) {
    const AnalogInputConfig good = input.config;
    const auto refusalOf = [&](const auto& change) {
        input.config = good;
        change(input.config);
        return refusal();
    };
    EXPECT_THAT(refusalOf([](auto& c) { c.channelList = "7:3"; }), HasSubstr("-10002"));
    EXPECT_THAT(refusalOf([](auto& c) { c.channelList = "0:16"; }), HasSubstr("from 0 to 15"));
    EXPECT_THAT(refusalOf([](auto& c) { c.channelList = ""; }), HasSubstr("-10002"));
    EXPECT_THAT(refusalOf([](auto& c) { c.scanRateHz = 200000; }), HasSubstr("1 to 100000 Hz"));
    EXPECT_THAT(refusalOf([](auto& c) { c.scanRateHz = std::numeric_limits<double>::quiet_NaN(); }),
                HasSubstr("-10003"));
    EXPECT_THAT(refusalOf([](auto& c) { c.upperVolts = c.lowerVolts; }), HasSubstr("-10004"));
    EXPECT_THAT(refusalOf([](auto& c) { c.upperVolts = 11; }), HasSubstr("-10 to 10 V"));
    EXPECT_THAT(refusalOf([](auto& c) { c.totalScans = 0; }), HasSubstr("-10006"));
    EXPECT_THAT(refusalOf([](auto& c) { c.totalScans = -7; }), HasSubstr("-10006"));
    EXPECT_THAT(refusalOf([](auto& c) { c.totalScans = std::int64_t{1} << 31; }), HasSubstr("2147483647"));
    EXPECT_THAT(refusalOf([](auto& c) {
                    c.channelList = "0:15,0:15,0:15,0:15";
                    c.totalScans = std::numeric_limits<std::int32_t>::max();
                }),
                HasSubstr("-10007"));
    const auto triggered = [](auto& c) {
        c.start.type = StartCondition::Type::AnalogLevel;
        c.start.channel = "0";
    };
    EXPECT_THAT(refusalOf([&](auto& c) {
                    triggered(c);
                    c.start.channel = "5";
                }),
                HasSubstr("\"5\" is not among the listed channels 0:1"));
    EXPECT_THAT(refusalOf([&](auto& c) {
                    triggered(c);
                    c.start.preTriggerScans = 100;
                }),
                HasSubstr("-10005"));
    board->checks = {DaqStatus::DeviceRefused, "Out of order."};
    EXPECT_THAT(refusalOf([](auto&) {}), testing::AllOf(HasSubstr("-10009 "), HasSubstr("Out of order.")));
    EXPECT_THAT(input.describe(-10009), testing::Not(HasSubstr("Out of order."))) << "once another code has failed";
}

TEST_F(AnalogInputTest, ADeviceNumberWithoutABoardIsNone) {
    EXPECT_EQ(input.deviceDescription(), "Device: Fake");
    const DigitalOutput lines(input);
    input.selectDevice(2);
    EXPECT_EQ(input.deviceDescription(), "Device: none");
    EXPECT_EQ(lines.lines(), 0);
    EXPECT_THAT(refusal(), HasSubstr("-10001"));
}

TEST_F(AnalogInputTest, ABoardThatCannotBeOpenedIsReportedByStart) {
    board->starts = {DaqStatus::DeviceUnavailable, "Unplugged."};
    ASSERT_EQ(input.Configure(), 0);
    EXPECT_EQ(input.Start(), static_cast<int>(DaqStatus::DeviceUnavailable));
    EXPECT_THAT(input.describe(-10008), HasSubstr("Unplugged."));
    EXPECT_FALSE(input.running());
}

TEST_F(AnalogInputTest, CannotBeConfiguredOrStartedTwiceWhileItRuns) {
    board->lastScan = 10; // then it waits
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    EXPECT_EQ(input.Start(), static_cast<int>(DaqStatus::Busy));
    EXPECT_EQ(input.Configure(), static_cast<int>(DaqStatus::Busy));
    input.Stop();
    EXPECT_EQ(input.Configure(), 0);
}

TEST_F(AnalogInputTest, ContinuousDeliveryShowsTheNewestScansAndReadsEveryOne) {
    board->descriptionGiven.inputs = 16;
    input.config.channelList = "0:15";
    input.config.scanRateHz = 100000;
    input.config.end = EndCondition::Continuous;
    input.config.start.type = StartCondition::Type::None;
    board->lastScan = 200000;
    board->sample = [](int, std::int64_t scan) { return 1e-5 * static_cast<double>(scan); };
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    ASSERT_TRUE(run([this] { return !blocks.empty(); }));
    for (const AnalogBlock& block : blocks) {
        EXPECT_FALSE(block.last);
        EXPECT_LE(block.samples->samples(), 100);
        EXPECT_NEAR(block.samples->at(0, 0), 1e-5 * static_cast<double>(block.firstScan), 1e-9);
        const std::int64_t n = block.samples->samples();
        for (std::int64_t i = 1; i < n; ++i)
            ASSERT_NEAR(block.samples->at(15, i) - block.samples->at(15, i - 1), 1e-5, 1e-9);
    }
    input.Stop();
    EXPECT_LE(board->scansRead, 200000);
}

TEST_F(AnalogInputTest, AWindowThatWasBusySeesTheNewestScansAndNotTheOldest) {
    input.config.channelList = "0";
    input.config.scanRateHz = 100000;
    input.config.end = EndCondition::Continuous;
    board->sample = [](int, std::int64_t scan) { return 1e-9 * static_cast<double>(scan); };
    // Nothing is dispatched until the board has delivered for a good while: several blocks have been made by then.
    board->lastScan = 40'000'000;
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    while (board->scansRead < 20'000'000)
        std::this_thread::yield();
    events.runUntil([] { return false; }, std::chrono::milliseconds(0));
    ASSERT_EQ(blocks.size(), 1U) << "the blocks that nobody took were replaced";
    EXPECT_GT(blocks[0].samples->at(0, blocks[0].samples->samples() - 1), 1e-9 * 1'000'000);
    input.Stop();
}

TEST_F(AnalogInputTest, ContinuousDeliveryIgnoresTheTriggerAndKeepsItForLater) {
    input.config.start = {.type = StartCondition::Type::AnalogLevel,
                          .levelVolts = 9.0,
                          .secondThresholdVolts = 8.1,
                          .channel = "0",
                          .preTriggerScans = 0,
                          .rising = true};
    input.config.end = EndCondition::Continuous;
    ASSERT_EQ(input.Configure(), 0);
    ASSERT_EQ(input.Start(), 0);
    EXPECT_TRUE(run([this] { return !blocks.empty(); })) << "the signal never reaches the level";
    input.Stop();
    EXPECT_EQ(input.config.start.type, StartCondition::Type::AnalogLevel);
}

TEST(DaqStatusTest, EveryCodeHasASentenceOfItsOwn) {
    std::set<std::string_view> sentences{daqStatusDescription(12345)}; // of a code that nobody knows
    std::vector<int> codes{0};
    for (int code = static_cast<int>(DaqStatus::NoDevice); code >= static_cast<int>(DaqStatus::Busy); --code)
        codes.push_back(code);
    for (const int code : codes) {
        EXPECT_EQ(daqStatusDescription(code).back(), '.');
        EXPECT_TRUE(sentences.insert(daqStatusDescription(code)).second) << code;
    }
}

} // namespace
} // namespace tavex2::test
