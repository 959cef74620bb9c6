#include "display/CursorPlace.h"

#include <gtest/gtest.h>

namespace tavex2 {
namespace {

TEST(CursorPlaceTest, TheEndsOfAViewGiveTheSamplesInsideIt) {
    EXPECT_EQ(sampleAtOrAfter(0.0105, 1000, 2001), 11);
    EXPECT_EQ(sampleAtOrBefore(0.0195, 1000, 2001), 19);
    EXPECT_EQ(nearestSample(0.0194, 1000, 2001), 19);
    EXPECT_EQ(nearestSample(0.0196, 1000, 2001), 20);
}

TEST(CursorPlaceTest, AnAxisEndThatWasRoundedIsStillTheSample) {
    EXPECT_EQ(sampleAtOrBefore(1.9999999999999998, 1000, 2001), 2000);
    EXPECT_EQ(sampleAtOrAfter(static_cast<double>(0.05F), 100'000, 10'001), 5000) << "0.0500000007";
    EXPECT_EQ(sampleAtOrBefore(static_cast<double>(0.3F) - 1e-9, 10, 20), 3);
}

TEST(CursorPlaceTest, TimesBeyondTheDataGiveItsEnds) {
    EXPECT_EQ(sampleAtOrAfter(-3, 1000, 10), 0);
    EXPECT_EQ(sampleAtOrBefore(99, 1000, 10), 9);
    EXPECT_EQ(nearestSample(1e300, 1000, 10), 9);
    EXPECT_EQ(nearestSample(-1e300, 1000, 10), 0);
}

} // namespace
} // namespace tavex2
