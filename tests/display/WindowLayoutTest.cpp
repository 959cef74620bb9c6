#include "display/WindowLayout.h"

#include <gtest/gtest.h>

namespace tavex2 {
namespace {

// 10000 twips remain for the graphs in each direction.
constexpr WindowMeasures window{.width = 10000 + 135 + 90, .height = 10000 + 1150 + 600, .left = 90, .top = 600};

TEST(WindowLayout, AllThreeGraphsGetAHalfAndTwoQuarters) {
    const GraphPlaces places = layoutGraphs(window, true, true);
    EXPECT_EQ(places.cwG, (GraphPlace{90, 600, 10000, 5000}));
    EXPECT_EQ(places.cwGLast, (GraphPlace{90, 5600, 10000, 2500}));
    EXPECT_EQ(places.cwGAvg, (GraphPlace{90, 8100, 10000, 2500}));
}

TEST(WindowLayout, TwoGraphsGetAHalfEachAndTheHiddenOneAPlaceToo) {
    const GraphPlaces last = layoutGraphs(window, true, false);
    EXPECT_EQ(last.cwG.height, 5000);
    EXPECT_EQ(last.cwGLast, (GraphPlace{90, 5600, 10000, 5000}));
    EXPECT_EQ(last.cwGAvg.top, 10600);

    const GraphPlaces average = layoutGraphs(window, false, true);
    EXPECT_EQ(average.cwGAvg, (GraphPlace{90, 5600, 10000, 5000}));
    EXPECT_EQ(average.cwGLast, (GraphPlace{90, 5600, 10000, 5000}));
}

TEST(WindowLayout, TheCurrentTrialAloneFillsTheHeight) {
    const GraphPlaces places = layoutGraphs(window, false, false);
    EXPECT_EQ(places.cwG.height, 10000);
    EXPECT_EQ(places.cwGLast.height, 5000);
    EXPECT_EQ(places.cwGAvg.top, 10600);
}

TEST(WindowLayout, HalvesRoundToEven) {
    WindowMeasures odd = window;
    odd.height += 1; // 10001 / 2 = 5000.5
    EXPECT_EQ(layoutGraphs(odd, true, true).cwG.height, 5000);
    odd.height += 2; // 10003 / 2 = 5001.5
    EXPECT_EQ(layoutGraphs(odd, true, true).cwG.height, 5002);
    odd.width += 0.5;
    EXPECT_EQ(layoutGraphs(odd, true, true).cwG.width, 10000);
}

TEST(WindowLayout, SizesBeyond16BitsSaturate) {
    WindowMeasures wide = window;
    wide.width = 60000;
    wide.height = 90000;
    const GraphPlaces places = layoutGraphs(wide, false, false);
    EXPECT_EQ(places.cwG.width, 32767);
    EXPECT_EQ(places.cwG.height, 32767);
}

TEST(WindowLayout, TheLegendsSwatchesRunDownFourColumns) {
    EXPECT_EQ(legendSwatch(0).left, 120);
    EXPECT_EQ(legendSwatch(0).top, 120);
    EXPECT_EQ(legendSwatch(3).left, 120);
    EXPECT_EQ(legendSwatch(3).top, 1200);
    EXPECT_EQ(legendSwatch(4).left, 600);
    EXPECT_EQ(legendSwatch(4).top, 120);
    EXPECT_EQ(legendSwatch(15).left, 1560);
    EXPECT_EQ(legendSwatch(15).top, 1200);
    EXPECT_EQ(legendSwatch(9).width, 150);
    EXPECT_EQ(legendSwatch(9).height, 300);
}

} // namespace
} // namespace tavex2
