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
    QueueEventLoop events;
    std::vector<int> order;
    events.post([&] {
        order.push_back(1);
        events.post([&] { order.push_back(3); });
    });
    events.post([&] { order.push_back(2); });
    events.processPending();
    EXPECT_THAT(order, testing::ElementsAre(1, 2, 3));
}

TEST(QueueEventLoopTest, WaitsForWhatAnotherThreadPosts) {
    QueueEventLoop events;
    bool done = false;
    std::jthread other([&] { events.post([&] { done = true; }); });
    EXPECT_TRUE(events.runUntil([&] { return done; }, hours(1)));
    EXPECT_FALSE(events.runUntil([] { return false; }, milliseconds(1)));
}

} // namespace
} // namespace tavex2::test
