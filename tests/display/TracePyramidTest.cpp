#include "display/TracePyramid.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace tavex2 {
namespace {

template <class T>
Extent bruteForce(const std::vector<T>& samples, std::int64_t first, std::int64_t last) {
    Extent extent;
    for (std::int64_t i = std::max<std::int64_t>(first, 0); i < last && i < std::ssize(samples); ++i)
        extent.add(static_cast<double>(samples[static_cast<std::size_t>(i)]));
    return extent;
}

/// Arbitrary samples, one in five NaN; up to three levels of buckets high.
template <class T>
std::vector<T> arbitrarySamples() {
    const auto count = static_cast<std::size_t>(*rc::gen::inRange(0, 40000));
    std::uint64_t random = *rc::gen::arbitrary<std::uint64_t>();
    std::vector<T> samples(count);
    for (T& sample : samples) {
        random = random * 6364136223846793005U + 1442695040888963407U;
        sample = (random >> 33) % 5 == 0 ? std::numeric_limits<T>::quiet_NaN()
                                         : static_cast<T>(static_cast<double>(random >> 11) / 1e12 - 4500);
    }
    return samples;
}

template <class T>
void agreesWithBruteForce() {
    const std::vector<T> samples = arbitrarySamples<T>();
    const TracePyramid pyramid{std::span<const T>(samples)};
    const auto count = static_cast<int>(samples.size());
    RC_ASSERT(pyramid.whole() == bruteForce(samples, 0, count));
    for (int query = 0; query < 50; ++query) {
        const int first = *rc::gen::inRange(-5, count + 5);
        const int last = *rc::gen::inRange(-5, count + 5);
        RC_ASSERT(pyramid.extent(first, last) == bruteForce(samples, first, last));
    }
}

RC_GTEST_PROP(TracePyramid, AgreesWithBruteForceOnDoubles, ()) {
    agreesWithBruteForce<double>();
}
RC_GTEST_PROP(TracePyramid, AgreesWithBruteForceOnFloats, ()) {
    agreesWithBruteForce<float>();
}

TEST(TracePyramid, OfNoSamplesIsEmpty) {
    const TracePyramid pyramid{std::span<const double>()};
    EXPECT_EQ(pyramid.samples(), 0);
    EXPECT_TRUE(pyramid.whole().empty());
    EXPECT_TRUE(pyramid.extent(0, 10).empty());
}

TEST(TracePyramid, OfNaNAloneIsEmpty) {
    const std::vector<double> samples(1000, std::nan(""));
    const TracePyramid pyramid{std::span<const double>(samples)};
    EXPECT_TRUE(pyramid.whole().empty());
    EXPECT_TRUE(pyramid.extent(3, 900).empty());
}

TEST(TracePyramid, FindsASingleSampleWhereverItLies) {
    constexpr std::size_t count = 64 * 8 * 8 + 17;
    for (std::size_t spike = 0; spike < count; ++spike) {
        std::vector<float> samples(count, 0.0F);
        samples[spike] = -3.0F;
        const TracePyramid pyramid{std::span<const float>(samples)};
        ASSERT_EQ(pyramid.whole().lowest, -3.0) << spike;
        ASSERT_EQ(pyramid.extent(1, count - 1).lowest, spike > 0 && spike < count - 1 ? -3.0 : 0.0) << spike;
        const auto at = static_cast<std::int64_t>(spike);
        ASSERT_EQ(pyramid.extent(0, at).lowest, 0.0 + (spike == 0 ? INFINITY : 0.0)) << spike;
        ASSERT_EQ(pyramid.extent(at, at + 1), (Extent{-3.0, -3.0})) << spike;
    }
}

TEST(TracePyramid, IgnoresIndicesOutsideTheData) {
    const std::vector<double> samples{1, 2, 3};
    const TracePyramid pyramid{std::span<const double>(samples)};
    EXPECT_EQ(pyramid.extent(-100, 100), (Extent{1, 3}));
    EXPECT_TRUE(pyramid.extent(3, 100).empty());
    EXPECT_TRUE(pyramid.extent(-5, 0).empty());
    EXPECT_TRUE(pyramid.extent(2, 1).empty());
}

TEST(TracePyramid, TakesInfinitiesAsSamples) {
    const std::vector<double> samples{1, INFINITY, -INFINITY, 2};
    const TracePyramid pyramid{std::span<const double>(samples)};
    EXPECT_EQ(pyramid.whole(), (Extent{-INFINITY, INFINITY}));
    EXPECT_EQ(pyramid.extent(1, 2), (Extent{INFINITY, INFINITY}));
    EXPECT_FALSE(pyramid.extent(1, 2).empty());
}

TEST(TracePyramid, BoundsEverySample) {
    std::vector<double> samples(1000);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = std::sin(static_cast<double>(i));
    const TracePyramid pyramid{std::span<const double>(samples)};
    for (std::int64_t i = 0; i < pyramid.samples(); ++i) {
        EXPECT_LE(pyramid.bounds(i).lowest, pyramid.sample(i));
        EXPECT_GE(pyramid.bounds(i).highest, pyramid.sample(i));
    }
}

TEST(TracePyramid, TellsTheExtentOfTheFiniteSamples) {
    std::vector<double> samples(1000, 0.5);
    samples[0] = std::nan("");
    samples[99] = INFINITY;
    samples[100] = 3; // in the same bucket
    samples[500] = -2;
    samples[999] = -INFINITY;
    const TracePyramid pyramid{std::span<const double>(samples)};
    EXPECT_EQ(pyramid.whole(), (Extent{-INFINITY, INFINITY}));
    EXPECT_EQ(pyramid.finite(), (Extent{-2, 3}));
}

TEST(TracePyramid, KnowsNoFiniteSampleWhereThereIsNone) {
    const std::vector<float> infinite(3, INFINITY);
    EXPECT_TRUE(TracePyramid{std::span<const float>(infinite)}.finite().empty());
    EXPECT_TRUE(TracePyramid().finite().empty());
}

} // namespace
} // namespace tavex2
