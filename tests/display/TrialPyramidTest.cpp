#include "display/TrialPyramid.h"

#include "display/Trials.h"

#include <gtest/gtest.h>

namespace tavex2 {
namespace {

TEST(TrialPyramid, OfNoTrialHasNoChannels) {
    const TrialPyramid pyramid(nullptr);
    EXPECT_EQ(pyramid.channels(), 0);
    EXPECT_EQ(pyramid.samples(), 0);
    EXPECT_TRUE(pyramid.whole().empty());
}

TEST(TrialPyramid, OfAnEmptyTrialHasNoChannels) {
    EXPECT_EQ(TrialPyramid(std::make_shared<const TrialArray>()).channels(), 0);
}

TEST(TrialPyramid, KnowsEveryChannelAndAllTogether) {
    const TrialPyramid pyramid(test::makeTrial(
        3, 1001, [](int channel, std::int64_t i) { return channel * 10 + static_cast<double>(i) / 1000; }));
    ASSERT_EQ(pyramid.channels(), 3);
    EXPECT_EQ(pyramid.samples(), 1001);
    EXPECT_EQ(pyramid.channel(0).whole(), (Extent{0, 1}));
    EXPECT_EQ(pyramid.channel(2).whole(), (Extent{20, 21}));
    EXPECT_EQ(pyramid.whole(), (Extent{0, 21}));
}

TEST(TrialPyramid, KeepsItsTrialAlive) {
    TrialData trial = test::makeTrial({1, 2, 3});
    const std::weak_ptr<const TrialArray> watched = trial;
    auto pyramid = std::make_unique<TrialPyramid>(std::move(trial));
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(pyramid->channel(0).sample(2), 3);
    pyramid.reset();
    EXPECT_TRUE(watched.expired());
}

TEST(TrialPyramid, OfALargeTrialIsTheSameThoughThreadsShareTheWork) {
    const TrialPyramid pyramid(test::makeTrial(
        7, 200'000, [](int channel, std::int64_t i) { return i == 1000 * channel ? 5.0 + channel : 0.0; }));
    for (int channel = 0; channel < 7; ++channel) {
        EXPECT_EQ(pyramid.channel(channel).whole(), (Extent{0, 5.0 + channel}));
        EXPECT_EQ(pyramid.channel(channel).extent(1000 * channel + 1, 200'000), (Extent{0, 0}));
    }
}

TEST(TrialPyramid, ReadsTheSinglePrecisionSamplesOfAFile) {
    TrialArray array = std::move(TrialArray::allocate(ElementType::Float32, 2, 1, 2)).value();
    array.floats(0)[0] = 0.25F;
    array.floats(0)[1] = -0.5F;
    EXPECT_EQ(TrialPyramid(std::make_shared<const TrialArray>(std::move(array))).whole(), (Extent{-0.5, 0.25}));
}

} // namespace
} // namespace tavex2
