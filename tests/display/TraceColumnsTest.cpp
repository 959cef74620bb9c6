#include "display/TraceColumns.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace tavex2 {
namespace {

std::vector<Extent> columnsOf(const std::vector<double>& samples, double interval, const TimeWindow& window) {
    std::vector<Extent> columns;
    traceColumns(TracePyramid{std::span<const double>(samples)}, interval, window, columns);
    return columns;
}

TEST(TraceColumns, ShowEverySpikeOfOneSampleAtEveryZoom) {
    constexpr std::size_t count = 1000;
    for (const int pixels : {3, 7, 100, 333, 1000, 1500}) {
        for (std::size_t spike = 0; spike < count; ++spike) {
            std::vector<double> samples(count, 0.0);
            samples[spike] = 1.0;
            const auto columns = columnsOf(samples, 0.001, {0, 0.999, pixels});
            const auto with = std::count_if(columns.begin(), columns.end(),
                                            [](const Extent& column) { return column.highest > 0.99; });
            // On the edge between two pixels the spike belongs to both.
            ASSERT_GE(with, 1) << "sample " << spike << " of " << pixels << " pixels";
            ASSERT_LE(with, 2) << "sample " << spike << " of " << pixels << " pixels";
        }
    }
}

RC_GTEST_PROP(TraceColumns, AreContinuousAndStayInsideTheData, ()) {
    const auto samples = *rc::gen::nonEmpty(rc::gen::container<std::vector<double>>(
        rc::gen::map(rc::gen::inRange(-1000, 1000), [](int x) { return x / 100.0; })));
    const int pixels = *rc::gen::inRange(1, 300);
    const double interval = *rc::gen::element(1.0, 0.001, 1.0 / 3.0, 1e-5);
    const double extent = interval * static_cast<double>(samples.size() - 1);
    const double left = extent * *rc::gen::inRange(-50, 50) / 100;
    const double right = left + extent * *rc::gen::inRange(1, 200) / 100;
    const TracePyramid pyramid{std::span<const double>(samples)};
    std::vector<Extent> columns;
    traceColumns(pyramid, interval, {left, right, pixels}, columns);

    const Extent* before = nullptr;
    for (const Extent& column : columns) {
        if (column.empty()) {
            before = nullptr;
            continue;
        }
        RC_ASSERT(column.lowest >= pyramid.whole().lowest - 1e-9);
        RC_ASSERT(column.highest <= pyramid.whole().highest + 1e-9);
        if (before != nullptr) {
            RC_ASSERT(column.lowest <= before->highest + 1e-9);
            RC_ASSERT(column.highest >= before->lowest - 1e-9);
        }
        before = &column;
    }
}

RC_GTEST_PROP(TraceColumns, OfManySamplesAreRightToAQuarterOfAPixelAndContinuous, ()) {
    const int count = *rc::gen::inRange(2000, 40000);
    const int rise = *rc::gen::element(0, 10, 1000);
    std::vector<double> samples(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        samples[static_cast<std::size_t>(i)] = std::sin(i * 12.9898) * 100 + rise * i;
    const int left = *rc::gen::inRange(-3000, count - 1);
    const int right = *rc::gen::inRange(left + 300, count + 3000);
    const int pixels = *rc::gen::inRange(1, std::max(2, (right - left) / 16));
    const bool backward = *rc::gen::arbitrary<bool>();
    const TracePyramid pyramid{std::span<const double>(samples)};
    std::vector<Extent> columns;
    const double low = left;
    const double high = right;
    traceColumns(pyramid, 1, backward ? TimeWindow{high, low, pixels} : TimeWindow{low, high, pixels}, columns);
    if (backward) std::reverse(columns.begin(), columns.end());

    const double width = (high - low) / pixels;
    const Extent* before = nullptr;
    for (int pixel = 0; pixel < pixels; ++pixel) {
        const Extent& column = columns[static_cast<std::size_t>(pixel)];
        const double from = low + pixel * width;
        const auto inner = pyramid.extent(std::llround(std::ceil(from + width / 4)),
                                          std::llround(std::floor(from + width * 3 / 4)) + 1);
        const auto outer = pyramid.extent(std::llround(std::floor(from - width / 4)) - 1,
                                          std::llround(std::ceil(from + width * 5 / 4)) + 2);
        RC_ASSERT(column.contains(inner));
        RC_ASSERT(outer.contains(column));
        if (before && !before->empty() && !column.empty()) {
            RC_ASSERT(column.lowest <= before->highest);
            RC_ASSERT(column.highest >= before->lowest);
        }
        before = &column;
    }
}

TEST(TraceColumns, OfManySamplesKeepTheGapOfSamplesThatAreNoNumbers) {
    std::vector<double> samples(100'000, 1.0);
    std::fill(samples.begin() + 30'100, samples.begin() + 41'900, std::nan(""));
    const auto columns = columnsOf(samples, 1.0, {0, 100'000, 100});
    for (int pixel = 0; pixel < 100; ++pixel)
        EXPECT_EQ(columns[static_cast<std::size_t>(pixel)].empty(), pixel > 30 && pixel < 41) << pixel;
}

RC_GTEST_PROP(TraceColumns, TogetherSpanExactlyTheSamplesInTheWindow, ()) {
    const int count = *rc::gen::inRange(2, 5000);
    std::vector<double> samples(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        samples[static_cast<std::size_t>(i)] = std::sin(i * 12.9898) * 43758.5453;
    const int first = *rc::gen::inRange(0, count - 1);
    const int last = *rc::gen::inRange(first + 1, count);
    const int pixels = *rc::gen::inRange(1, 500);
    const TracePyramid pyramid{std::span<const double>(samples)};
    std::vector<Extent> columns;
    traceColumns(pyramid, 0.001, {first * 0.001, last * 0.001, pixels}, columns);
    Extent all;
    for (const Extent& column : columns)
        all.add(column);
    RC_ASSERT(all == pyramid.extent(first, last + 1));
}

TEST(TraceColumns, BetweenTwoSamplesFollowTheStraightLine) {
    const auto columns = columnsOf({0.0, 1.0}, 1.0, {0, 1, 4});
    ASSERT_EQ(columns.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(columns[i].lowest, 0.25 * static_cast<double>(i), 1e-6);
        EXPECT_NEAR(columns[i].highest, 0.25 * static_cast<double>(i + 1), 1e-6);
    }
}

TEST(TraceColumns, BesideTheDataAreEmpty) {
    const auto columns = columnsOf({1, 1, 1}, 1.0, {-4, 6, 10});
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(columns[static_cast<std::size_t>(i)].empty(), i < 3 || i > 6) << "column " << i;
}

TEST(TraceColumns, AreEmptyOverNaNAndDoNotBridgeIt) {
    const double nan = std::nan("");
    const auto columns = columnsOf({0, 0, nan, nan, nan, 5, 5}, 1.0, {0, 6, 6});
    EXPECT_EQ(columns[0], (Extent{0, 0}));
    EXPECT_TRUE(columns[2].empty());
    EXPECT_TRUE(columns[3].empty());
    EXPECT_EQ(columns[5], (Extent{5, 5}));
}

TEST(TraceColumns, OfABackwardWindowAreTheMirrorImage) {
    const std::vector<double> samples{0, 3, 1, 4, 1, 5, 9, 2, 6};
    const auto forward = columnsOf(samples, 0.5, {0, 4, 13});
    auto backward = columnsOf(samples, 0.5, {4, 0, 13});
    std::reverse(backward.begin(), backward.end());
    ASSERT_EQ(backward.size(), forward.size());
    for (std::size_t i = 0; i < forward.size(); ++i) {
        EXPECT_NEAR(backward[i].lowest, forward[i].lowest, 1e-9);
        EXPECT_NEAR(backward[i].highest, forward[i].highest, 1e-9);
    }
}

TEST(TraceColumns, OfAWindowWithoutExtentOrPixelsOrIntervalAreEmpty) {
    const std::vector<double> samples{1, 2};
    for (const Extent& column : columnsOf(samples, 1.0, {0.5, 0.5, 3}))
        EXPECT_TRUE(column.empty());
    for (const Extent& column : columnsOf(samples, 0.0, {0, 1, 3}))
        EXPECT_TRUE(column.empty());
    for (const Extent& column : columnsOf(samples, 1.0, {0, std::nan(""), 3}))
        EXPECT_TRUE(column.empty());
    EXPECT_TRUE(columnsOf(samples, 1.0, {0, 1, 0}).empty());
    EXPECT_TRUE(columnsOf(samples, 1.0, {0, 1, -2}).empty());
}

TEST(TraceColumns, OfASingleSampleShowItAtTimeZero) {
    const auto columns = columnsOf({7}, 1.0, {0, 1, 3});
    EXPECT_EQ(columns[0], (Extent{7, 7}));
    EXPECT_TRUE(columns[1].empty());
}

TEST(SamplesPerPixel, CountsSamplesOfEitherDirection) {
    EXPECT_DOUBLE_EQ(samplesPerPixel(0.001, {0, 1, 100}), 10);
    EXPECT_DOUBLE_EQ(samplesPerPixel(0.001, {1, 0, 100}), 10);
    EXPECT_EQ(samplesPerPixel(0.001, {1, 1, 100}), 0);
}

TEST(VisibleSamples, IncludeTheNextBeyondEitherEdge) {
    const SampleRange range = visibleSamples(100, 0.1, {1.05, 2.05, 500});
    EXPECT_EQ(range.first, 10);
    EXPECT_EQ(range.last, 22);
}

TEST(VisibleSamples, StayInsideTheData) {
    const SampleRange all = visibleSamples(100, 0.1, {-5, 50, 500});
    EXPECT_EQ(all.first, 0);
    EXPECT_EQ(all.last, 100);
    EXPECT_EQ(visibleSamples(100, 0.1, {20, 30, 500}).size(), 0);
    EXPECT_EQ(visibleSamples(100, 0.1, {-3, -2, 500}).size(), 0);
    EXPECT_EQ(visibleSamples(0, 0.1, {0, 1, 500}).size(), 0);
}

} // namespace
} // namespace tavex2
