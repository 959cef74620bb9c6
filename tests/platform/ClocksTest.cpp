#include "platform/QueueEventLoop.h"
#include "platform/SteadyClock.h"
#include "platform/VirtualClock.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

namespace tavex2::test {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

TEST(SteadyClockTest, WaitsForTheVeryNextMillisecond) {
    SteadyClock clock;
    for (int i = 0; i < 20; ++i) {
        const std::int64_t before = clock.milliseconds();
        clock.waitForNextMillisecond();
        EXPECT_GT(clock.milliseconds(), before);
    }
}

TEST(SteadyClockTest, WaitsUntilATimeOrAStop) {
    SteadyClock clock;
    const auto soon = clock.now() + milliseconds(5);
    clock.waitUntil(soon, {});
    EXPECT_GT(clock.now(), soon);

    std::stop_source stop;
    std::jthread waiting([&](const std::stop_token&) { clock.waitUntil(clock.now() + hours(1), stop.get_token()); });
    stop.request_stop();
    waiting.join(); // returns at once instead of in an hour
}

TEST(VirtualClockTest, StandsStillUntilSomebodyWaits) {
    VirtualClock clock;
    EXPECT_EQ(clock.now(), milliseconds(0));
    clock.waitForNextMillisecond();
    clock.waitForNextMillisecond();
    EXPECT_EQ(clock.now(), milliseconds(2));
}

TEST(VirtualClockTest, ABoardGoesOnOnlyWhenItsTimeHasPassed) {
    VirtualClock clock;
    std::atomic<bool> passed{false};
    std::jthread board([&] {
        clock.waitUntil(milliseconds(1), {});
        EXPECT_GT(clock.now(), milliseconds(1));
        passed = true;
    });
    clock.waitForNextMillisecond();
    EXPECT_FALSE(passed) << "what is done at one millisecond comes first";
    clock.waitForNextMillisecond();
    board.join();
    EXPECT_TRUE(passed);
}

TEST(VirtualClockTest, SetFreeItJumpsToWhereABoardWaits) {
    VirtualClock clock;
    clock.setFreeRunning(true);
    clock.waitUntil(hours(5), {});
    EXPECT_EQ(clock.now(), hours(5));
    clock.waitUntil(hours(1), {});
    EXPECT_EQ(clock.now(), hours(5)) << "and never back";
}

TEST(QueueEventLoopTest, RunsEventsInTheirOrderAlsoThoseThatEventsPost) {
    VirtualClock clock;
    QueueEventLoop events(clock);
    std::vector<int> order;
    events.post([&] {
        order.push_back(1);
        events.post([&] { order.push_back(3); });
    });
    events.post([&] { order.push_back(2); });
    events.runUntil([] { return false; }, std::chrono::milliseconds(0));
    EXPECT_THAT(order, testing::ElementsAre(1, 2, 3));
}

TEST(VirtualClockTest, SteppedItMovesByMillisecondsAloneThoughItIsFree) {
    VirtualClock clock;
    clock.setFreeRunning(true);
    clock.setStepped(true);
    std::jthread board([&] { clock.waitUntil(milliseconds(2), {}); });
    clock.waitForNextMillisecond();
    EXPECT_EQ(clock.now(), milliseconds(1));
    clock.setStepped(false);
    board.join();
    EXPECT_EQ(clock.now(), milliseconds(2));
}

TEST(QueueEventLoopTest, RunsWhatWaitsForItsTimeInTheOrderOfTheTimesAndNotEarlier) {
    VirtualClock clock;
    QueueEventLoop events(clock);
    std::vector<std::pair<int, std::int64_t>> ran;
    events.after(milliseconds(30), [&] { ran.emplace_back(30, clock.milliseconds()); });
    events.after(milliseconds(10), [&] { ran.emplace_back(10, clock.milliseconds()); });
    events.post([&] { ran.emplace_back(0, clock.milliseconds()); });
    EXPECT_TRUE(events.runUntil([&] { return ran.size() == 3; }, hours(1)));
    EXPECT_THAT(ran, testing::ElementsAre(testing::Pair(0, 0), testing::Pair(10, 10), testing::Pair(30, 30)));
}

TEST(QueueEventLoopTest, GivesUpWhenItsTimeIsOverThoughSomethingStillWaits) {
    SteadyClock clock;
    QueueEventLoop events(clock);
    bool ran = false;
    events.after(hours(1), [&] { ran = true; });
    EXPECT_FALSE(events.runUntil([&] { return ran; }, milliseconds(5)));
    EXPECT_FALSE(ran);
}

TEST(QueueEventLoopTest, RunsNothingOnceItsUserIsDone) {
    VirtualClock clock;
    QueueEventLoop events(clock);
    int ran = 0;
    events.post([&] { ++ran; });
    EXPECT_TRUE(events.runUntil([] { return true; }, hours(1)));
    EXPECT_EQ(ran, 0);
    events.post([&] { ++ran; });
    EXPECT_TRUE(events.runUntil([&] { return ran == 1; }, hours(1)));
    EXPECT_EQ(ran, 1) << "the second one waits for the next time";
}

TEST(QueueEventLoopTest, WhatWaitsForTheSameTimeRunsInTheOrderInWhichItWasAskedFor) {
    VirtualClock clock;
    QueueEventLoop events(clock);
    std::vector<int> order;
    for (const int i : {1, 2, 3})
        events.after(milliseconds(5), [&order, i] { order.push_back(i); });
    EXPECT_TRUE(events.runUntil([&] { return order.size() == 3; }, hours(1)));
    EXPECT_THAT(order, testing::ElementsAre(1, 2, 3));
}

TEST(QueueEventLoopTest, WhatWasPostedDoesNotWaitForATimeThatIsStillToCome) {
    VirtualClock clock;
    QueueEventLoop events(clock);
    std::vector<int> order;
    events.after(milliseconds(2), [&] { order.push_back(2); });
    events.after(milliseconds(1), [&] {
        order.push_back(1);
        events.post([&] { order.push_back(11); });
    });
    EXPECT_TRUE(events.runUntil([&] { return order.size() == 3; }, hours(1)));
    EXPECT_THAT(order, testing::ElementsAre(1, 11, 2));
}

TEST(QueueEventLoopTest, WhatWasPostedComesBeforeWhatIsDueAndNeitherIsLost) {
    VirtualClock clock;
    QueueEventLoop events(clock);
    std::vector<int> order;
    events.after(milliseconds(0), [&] { order.push_back(2); });
    events.post([&] { order.push_back(1); });
    EXPECT_FALSE(events.runUntil([] { return false; }, milliseconds(0)));
    EXPECT_THAT(order, testing::ElementsAre(1, 2));
}

TEST(QueueEventLoopTest, WaitsForWhatAnotherThreadPosts) {
    VirtualClock clock;
    QueueEventLoop events(clock);
    bool done = false;
    std::jthread other([&] { events.post([&] { done = true; }); });
    EXPECT_TRUE(events.runUntil([&] { return done; }, hours(1)));
    EXPECT_FALSE(events.runUntil([] { return false; }, milliseconds(1)));
}

} // namespace
} // namespace tavex2::test
