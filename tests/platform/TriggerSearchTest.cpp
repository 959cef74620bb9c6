#include "platform/TriggerSearch.h"

#include "platform/ScanAssembler.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// All crossings in samples that come in pieces of the given size.
std::vector<std::int64_t> crossings(const LevelTrigger& trigger, const std::vector<double>& samples,
                                    std::size_t piece = std::numeric_limits<std::size_t>::max()) {
    std::vector<std::int64_t> found;
    TriggerSearch search(trigger);
    for (std::span<const double> rest(samples); !rest.empty();) {
        const std::size_t count = std::min(rest.size(), piece);
        const auto crossing = search.next(count, [&](std::size_t i) { return rest[i]; });
        if (crossing) found.push_back(search.seen() - 1);
        rest = rest.subspan(crossing ? *crossing + 1 : count);
    }
    return found;
}

LevelTrigger trigger(double level, bool rising = true, std::int64_t preTrigger = 0) {
    return levelTriggerFor({.type = StartCondition::Type::AnalogLevel,
                            .levelVolts = level,
                            .secondThresholdVolts = 0.9 * level,
                            .channel = "0",
                            .preTriggerScans = preTrigger,
                            .rising = rising},
                           0);
}

TEST(TriggerSearchTest, ArmsAnewBehindEachCrossing) {
    EXPECT_THAT(crossings(trigger(1.0), {0, 1, 1.5, 0.95, 1.2, 0.9, 1.0, 2, 0, 3}), ElementsAre(1, 6, 9))
        << "0.95 lies inside the band and arms nothing";
}

TEST(TriggerSearchTest, AFallingSlopeFiresOnTheWayDown) {
    EXPECT_THAT(crossings(trigger(-1.0, false), {0, -1, -2, -0.95, -1.1, -0.9, -1.0}), ElementsAre(1, 6));
    EXPECT_THAT(crossings(trigger(1.0, false), {0, 2, 0, 1.05, 0.9, 1.2, 1.0}), ElementsAre(2, 6))
        << "the far side of a falling slope lies above the level";
}

TEST(TriggerSearchTest, ALevelOfZeroHasNoBand) {
    EXPECT_THAT(crossings(trigger(0), {0, 0, -1e-9, 0, 0, -1e-9, 1}), ElementsAre(3, 6));
    EXPECT_THAT(crossings(trigger(0), {0, 0, 0}), IsEmpty()) << "a signal at rest crosses nothing";
}

TEST(TriggerSearchTest, CrossingsBeforeThePreTriggerScansHavePassedDoNotCount) {
    EXPECT_THAT(crossings(trigger(1.0, true, 3), {0, 1, 0, 1, 0, 1}), ElementsAre(5)) << "nor does arming there";
    EXPECT_THAT(crossings(trigger(1.0, true, 2), {0, 1, 0, 1, 0, 1}), ElementsAre(3, 5))
        << "once they have, every crossing does";
}

RC_GTEST_PROP(TriggerSearchProperty, TheFirstCrossingIsWhereACollectionStarts, ()) {
    const auto steps = *rc::gen::container<std::vector<int>>(200, rc::gen::inRange(-12, 13));
    std::vector<double> samples;
    for (const int step : steps)
        samples.push_back(0.1 * step);
    const auto pre = *rc::gen::inRange<std::int64_t>(0, 12);
    const LevelTrigger asked = trigger(0.1 * *rc::gen::inRange(-9, 10), *rc::gen::arbitrary<bool>(), pre);
    const auto piece = *rc::gen::inRange<std::size_t>(1, 40);
    const std::vector<std::int64_t> found = crossings(asked, samples, piece);

    ScanAssembler collection =
        ScanAssembler::create({.channels = 1, .blockScans = pre + 1, .blocks = 1, .limits = {}, .trigger = asked})
            .value();
    std::optional<std::int64_t> started;
    RC_ASSERT(static_cast<bool>(
        collection.add(samples, [&](const TrialArray&, int) { started = collection.firstScan() + pre; })));
    RC_ASSERT(started.has_value() == !found.empty());
    if (started) RC_ASSERT(*started == found.front());

    // What a collection finds that begins behind a crossing is the next one.
    for (std::size_t i = 0; i + 1 < found.size(); ++i) {
        LevelTrigger again = asked;
        again.preTriggerScans = 0;
        const std::vector<double> behind(samples.begin() + found[i] + 1, samples.end());
        RC_ASSERT(found[i] + 1 + crossings(again, behind, piece).at(0) == found[i + 1]);
    }
}

} // namespace
} // namespace tavex2::test
