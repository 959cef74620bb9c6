#include "platform/ScanAssembler.h"

#include "platform/LatestWindow.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace tavex2::test {
namespace {

/// The crossing as the rule says it, for one channel: the first sample from `from` on that reaches the level after one
/// on its far side by the band.
std::optional<std::size_t> crossing(const std::vector<double>& samples, double level, double band, bool rising,
                                    std::size_t from) {
    bool armed = false;
    for (std::size_t i = from; i < samples.size(); ++i) {
        const double v = samples[i];
        if (!armed)
            armed = rising ? (band > 0 ? v <= level - band : v < level) : (band > 0 ? v >= level + band : v > level);
        else if (rising ? v >= level : v <= level)
            return i;
    }
    return std::nullopt;
}

struct Assembled {
    std::vector<TrialArray> blocks;
    bool waiting = false;
    std::vector<double> unfinished;
};

/// Feeds one channel's samples in pieces of the given sizes, over and over.
Assembled assemble(const AssemblyConfig& config, const std::vector<double>& samples,
                   const std::vector<std::size_t>& pieces = {1}) {
    ScanAssembler assembler = ScanAssembler::create(config).value();
    Assembled result;
    std::span<const double> rest(samples);
    for (std::size_t i = 0; !rest.empty(); ++i) {
        const std::size_t size = std::min(rest.size(), pieces[i % pieces.size()]);
        EXPECT_TRUE(assembler.add(rest.first(size), [&](TrialArray block, int index) {
            EXPECT_EQ(index, static_cast<int>(result.blocks.size()));
            result.blocks.push_back(std::move(block));
        }));
        rest = rest.subspan(size);
    }
    result.waiting = assembler.waitingForTrigger();
    const TrialArray unfinished = assembler.takeUnfinished();
    for (std::int64_t i = 0; i < unfinished.samples(); ++i)
        result.unfinished.push_back(unfinished.at(0, i));
    return result;
}

AssemblyConfig triggered(double level, double band, bool rising, std::int64_t preTrigger, std::int64_t blockScans) {
    return {.channels = 1,
            .blockScans = blockScans,
            .blocks = 1,
            .limits = {},
            .trigger = LevelTrigger{
                .column = 0, .levelVolts = level, .bandVolts = band, .rising = rising, .preTriggerScans = preTrigger}};
}

std::vector<double> samplesOf(const TrialArray& block) {
    const auto row = block.doubles(0);
    return {row.begin(), row.end()};
}

TEST(ScanAssemblerTest, FiresAtTheFirstSampleThatReachesTheLevelAfterTheFarSide) {
    const auto result = assemble(triggered(1.0, 0.1, true, 0, 2), {1.2, 0.95, 1.1, 0.9, 0.99, 1.0, 1.3});
    ASSERT_EQ(result.blocks.size(), 1U);
    EXPECT_THAT(samplesOf(result.blocks[0]), testing::ElementsAre(1.0, 1.3));
}

TEST(ScanAssemblerTest, ASignalThatStaysInsideTheBandNeverFires) {
    const auto result = assemble(triggered(1.0, 0.1, true, 0, 1), {0.95, 1.05, 0.91, 1.2, 0.901, 1.0});
    EXPECT_TRUE(result.waiting);
    EXPECT_TRUE(result.blocks.empty());
    EXPECT_TRUE(result.unfinished.empty());
}

TEST(ScanAssemblerTest, ALevelOfZeroFiresOnAPlainCrossing) {
    EXPECT_THAT(samplesOf(assemble(triggered(0, 0, true, 0, 1), {0.0, 0.0, -0.001, 0.0}).blocks.at(0)),
                testing::ElementsAre(0.0));
    EXPECT_TRUE(assemble(triggered(0, 0, true, 0, 1), {0.0, 0.0, 0.0}).waiting) << "a signal at rest crosses nothing";
}

TEST(ScanAssemblerTest, AFallingSlopeAndANegativeLevelAreTheMirrorImage) {
    EXPECT_THAT(samplesOf(assemble(triggered(-1.0, 0.1, false, 0, 2), {0, -0.95, -1.0, -1.5}).blocks.at(0)),
                testing::ElementsAre(-1.0, -1.5));
    EXPECT_THAT(samplesOf(assemble(triggered(-1.0, 0.1, true, 0, 1), {-1.05, -0.9, -1.1, -1.0}).blocks.at(0)),
                testing::ElementsAre(-1.0))
        << "the far side of a rising slope lies below the level, whatever its sign";
}

TEST(ScanAssemblerTest, SearchesOnlyOnceEnoughScansHavePassed) {
    // The first crossing comes before three scans have passed and does not count.
    const std::vector<double> samples{0, 1, 0, 2, 0, 0, 3, 4};
    const auto result = assemble(triggered(1.0, 0.1, true, 3, 5), samples);
    ASSERT_EQ(result.blocks.size(), 1U);
    EXPECT_THAT(samplesOf(result.blocks[0]), testing::ElementsAre(2, 0, 0, 3, 4));
}

TEST(ScanAssemblerTest, NotANumberNeitherArmsNorFires) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(assemble(triggered(1.0, 0.1, true, 0, 1), {nan, 2.0, nan}).waiting);
}

TEST(ScanAssemblerTest, TheTriggerSeesTheLimitedSignal) {
    AssemblyConfig config = triggered(5.0, 0.5, true, 0, 1);
    config.limits = {.lower = -1, .upper = 4};
    EXPECT_TRUE(assemble(config, {0, 9, 0, 9}).waiting);
}

TEST(ScanAssemblerTest, RepeatsAfterATriggerFollowWithoutAGap) {
    AssemblyConfig config = triggered(1.0, 0.1, true, 2, 3);
    config.blocks = 2;
    const auto result = assemble(config, {0, 0.1, 0.2, 0.3, 1, 2, 3, 4, 5, 6}, {4});
    ASSERT_EQ(result.blocks.size(), 2U);
    EXPECT_THAT(samplesOf(result.blocks[0]), testing::ElementsAre(0.2, 0.3, 1));
    EXPECT_THAT(samplesOf(result.blocks[1]), testing::ElementsAre(2, 3, 4));
}

TEST(ScanAssemblerTest, GivesTheUnfinishedBlockWithItsPreTriggerScans) {
    const auto result = assemble(triggered(1.0, 0.1, true, 2, 9), {0, 0.1, 0.2, 0.3, 1, 2}, {3});
    EXPECT_FALSE(result.waiting);
    EXPECT_THAT(result.unfinished, testing::ElementsAre(0.2, 0.3, 1, 2));
}

TEST(ScanAssemblerTest, TellsWhichScanOfTheStreamEachBlockBeginsWith) {
    AssemblyConfig config = triggered(1.0, 0.1, true, 2, 3);
    config.blocks = 2;
    const std::vector<double> samples{0, 0.1, 0.2, 0.3, 1, 2, 3, 4, 5, 6};
    for (const std::size_t piece : {1U, 3U, 10U}) {
        ScanAssembler assembler = ScanAssembler::create(config).value();
        std::vector<std::int64_t> begins;
        for (std::size_t i = 0; i < samples.size(); i += piece)
            EXPECT_TRUE(assembler.add(std::span(samples).subspan(i, std::min(piece, samples.size() - i)),
                                      [&](const TrialArray&, int) { begins.push_back(assembler.firstScan()); }));
        EXPECT_THAT(begins, testing::ElementsAre(2, 5)) << "in pieces of " << piece;
    }
}

TEST(ScanAssemblerTest, ABoardIsAskedForNoScanBeyondTheLastBlock) {
    const auto ignored = [](const TrialArray&, int) {};
    ScanAssembler assembler = ScanAssembler::create({.channels = 1, .blockScans = 3, .blocks = 2}).value();
    EXPECT_EQ(assembler.scansNeeded(), 6);
    EXPECT_TRUE(assembler.add(std::vector<double>{1, 2, 3, 4}, ignored));
    EXPECT_EQ(assembler.scansNeeded(), 2);
    EXPECT_TRUE(assembler.add(std::vector<double>{5, 6, 7}, ignored));
    EXPECT_EQ(assembler.scansNeeded(), 0);

    ScanAssembler waiting = ScanAssembler::create(triggered(1.0, 0.1, true, 2, 5)).value();
    EXPECT_TRUE(waiting.add(std::vector<double>{0, 0, 0}, ignored));
    EXPECT_EQ(waiting.scansNeeded(), std::numeric_limits<std::int64_t>::max()) << "nobody knows when it fires";
    EXPECT_TRUE(waiting.add(std::vector<double>{1}, ignored));
    EXPECT_EQ(waiting.scansNeeded(), 2) << "two came before the crossing";
}

TEST(ScanAssemblerTest, TheTriggerWatchesItsOwnChannelAndEveryChannelKeepsWhatCameBefore) {
    AssemblyConfig config = triggered(1.0, 0.1, true, 2, 4);
    config.channels = 2;
    config.trigger->column = 1;
    config.limits = {.lower = -50, .upper = 50};
    std::vector<TrialArray> blocks;
    ScanAssembler assembler = ScanAssembler::create(config).value();
    const std::vector<double> scans{0, 0, 99, 0, 20, 0, 30, 0.5, 99, 1, 50, 2};
    EXPECT_TRUE(assembler.add(scans, [&](TrialArray block, int) { blocks.push_back(std::move(block)); }));
    ASSERT_EQ(blocks.size(), 1U);
    const auto second = blocks[0].doubles(1);
    EXPECT_THAT(samplesOf(blocks[0]), testing::ElementsAre(20, 30, 50, 50));
    EXPECT_THAT(std::vector<double>(second.begin(), second.end()), testing::ElementsAre(0, 0.5, 1, 2));
}

TEST(ScanAssemblerTest, RefusesShapesThatNoTrialHas) {
    EXPECT_FALSE(ScanAssembler::create({.channels = 0}));
    EXPECT_FALSE(ScanAssembler::create({.channels = 1, .blockScans = 0}));
    EXPECT_FALSE(ScanAssembler::create(triggered(1, 0.1, true, 5, 5)));
}

RC_GTEST_PROP(ScanAssemblerProperty, AgreesWithTheRuleWhateverThePieces, ()) {
    const auto steps = *rc::gen::container<std::vector<int>>(200, rc::gen::inRange(-12, 13));
    std::vector<double> samples;
    for (const int step : steps)
        samples.push_back(0.1 * step);
    const auto pre = *rc::gen::inRange<std::int64_t>(0, 12);
    const auto block = *rc::gen::inRange<std::int64_t>(pre + 1, 40);
    const bool rising = *rc::gen::arbitrary<bool>();
    const double level = 0.1 * *rc::gen::inRange(-9, 10);
    const double band = std::abs(level - 0.9 * level);
    const auto pieces = *rc::gen::nonEmpty(rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange(1, 30)));

    const auto expected = crossing(samples, level, band, rising, static_cast<std::size_t>(pre));
    const Assembled result = assemble(triggered(level, band, rising, pre, block), samples, pieces);
    RC_ASSERT(result.waiting == !expected.has_value());
    if (!expected) return;
    const std::size_t first = *expected - static_cast<std::size_t>(pre);
    const std::vector<double> got = result.blocks.empty() ? result.unfinished : samplesOf(result.blocks[0]);
    const std::size_t length = std::min(static_cast<std::size_t>(block), samples.size() - first);
    RC_ASSERT(got == std::vector<double>(samples.begin() + static_cast<std::ptrdiff_t>(first),
                                         samples.begin() + static_cast<std::ptrdiff_t>(first + length)));
}

RC_GTEST_PROP(LatestWindowProperty, HoldsTheNewestScansInOrder, ()) {
    const auto size = *rc::gen::inRange<std::int64_t>(1, 20);
    const auto pieces = *rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 30));
    LatestWindow window = LatestWindow::create(2, size, {}).value();
    std::vector<double> all;
    for (const int piece : pieces) {
        std::vector<double> scans;
        for (int i = 0; i < piece; ++i) {
            scans.push_back(static_cast<double>(all.size() / 2 + static_cast<std::size_t>(i)));
            scans.push_back(-scans.back());
        }
        window.add(scans);
        all.insert(all.end(), scans.begin(), scans.end());
    }
    const auto latest = window.latest();
    RC_ASSERT(static_cast<bool>(latest) == !all.empty());
    if (!latest) return;
    const std::int64_t total = static_cast<std::int64_t>(all.size() / 2);
    const std::int64_t kept = std::min(size, total);
    RC_ASSERT(latest.value().samples() == kept);
    for (std::int64_t i = 0; i < kept; ++i) {
        RC_ASSERT(latest.value().at(0, i) == static_cast<double>(total - kept + i));
        RC_ASSERT(latest.value().at(1, i) == -latest.value().at(0, i));
    }
}

} // namespace
} // namespace tavex2::test
