#include "display/Zoom.h"

#include "display/FakeGraph.h"
#include "display/ZoomCommands.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

using testing::ElementsAre;

class ZoomTest : public testing::Test {
  protected:
    ZoomTest() {
        for (FakeGraph* graph : graphs.all()) {
            graph->time = {.minimum = 0, .maximum = 10};
            graph->voltage = {.minimum = -5, .maximum = 5};
        }
    }
    FakeGraphs graphs;
    ZoomCommands zoom{graphs.controls()};
};

TEST_F(ZoomTest, AtTheCentreZoomsInWithoutShifting) {
    ASSERT_TRUE(ZoomIn(graphs.cwG, 5, 0));
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.minimum), 1);
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.maximum), 9);
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.voltage.minimum), -4);
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.voltage.maximum), 4);
    EXPECT_THAT(graphs.cwG.log, ElementsAre("voltage maximum", "voltage minimum", "time maximum", "time minimum"));
}

TEST_F(ZoomTest, AtTheRightEdgeShiftsTheTimeByAFifthOfTheOldSpan) {
    ASSERT_TRUE(ZoomIn(graphs.cwG, 10, 0));
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.minimum), 3);
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.maximum), 11);
}

TEST_F(ZoomTest, AtTheLowerEdgeShiftsTheVoltageDown) {
    ASSERT_TRUE(ZoomIn(graphs.cwG, 5, -5));
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.voltage.minimum), -6);
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.voltage.maximum), 2);
}

TEST_F(ZoomTest, OutWidensTheViewByAFifth) {
    ASSERT_TRUE(ZoomOut(graphs.cwG, 5, 0));
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.minimum), -1);
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.maximum), 11);
}

TEST_F(ZoomTest, CountsInSinglePrecision) {
    graphs.cwG.time = {.minimum = 0, .maximum = 0.3};
    ASSERT_TRUE(ZoomIn(graphs.cwG, 0.15, 0));
    const float span = 0.3F;
    const float expected = span / 2 + span * 0.8F / 2 + (0.15F - span / 2) / (span / 2) * (0.2F * span);
    EXPECT_EQ(graphs.cwG.time.maximum, static_cast<double>(expected));
}

TEST_F(ZoomTest, AViewWithoutExtentEndsAsAnErrorAndStays) {
    graphs.cwG.time = {.minimum = 3, .maximum = 3};
    const Result<void> zoomed = ZoomIn(graphs.cwG, 3, 0);
    ASSERT_FALSE(zoomed);
    EXPECT_EQ(zoomed.error().kind, ErrorKind::InvalidValue);
    EXPECT_THAT(graphs.cwG.log, ElementsAre());
}

TEST_F(ZoomTest, TheWheelKeepsWhatLiesUnderThePointer) {
    const ViewPlace place = placeInView(graphs.cwG, 2.5, 0);
    EXPECT_EQ(place.time, 0.25);
    EXPECT_EQ(place.voltage, 0.5);
    zoomAround(graphs.cwG, place, 0.8);
    EXPECT_DOUBLE_EQ(graphs.cwG.time.minimum, 0.5);
    EXPECT_DOUBLE_EQ(graphs.cwG.time.maximum, 8.5);
    EXPECT_DOUBLE_EQ(placeInView(graphs.cwG, 2.5, 0).time, 0.25);
    zoomAround(graphs.cwG, place, 1 / 0.8);
    EXPECT_NEAR(graphs.cwG.time.minimum, 0, 1e-12);
    EXPECT_NEAR(graphs.cwG.time.maximum, 10, 1e-12);
}

TEST_F(ZoomTest, TheWheelStopsWhereNumbersEnd) {
    for (int i = 0; i < 2000; ++i)
        zoomAround(graphs.cwG, {0.3, 0.3}, 0.8);
    EXPECT_LT(graphs.cwG.time.minimum, graphs.cwG.time.maximum);
    for (int i = 0; i < 4000; ++i)
        zoomAround(graphs.cwG, {0.3, 0.3}, 1.25);
    EXPECT_LE(graphs.cwG.time.maximum, 1e12);
}

TEST_F(ZoomTest, KeysMoveTheViewByAShareOfIt) {
    moveView(graphs.cwG, 0.1, -0.2);
    EXPECT_DOUBLE_EQ(graphs.cwG.time.minimum, 1);
    EXPECT_DOUBLE_EQ(graphs.cwG.time.maximum, 11);
    EXPECT_DOUBLE_EQ(graphs.cwG.voltage.minimum, -7);
    EXPECT_DOUBLE_EQ(graphs.cwG.voltage.maximum, 3);
}

TEST_F(ZoomTest, TheOtherGraphsFollowTheCurrentOne) {
    graphs.cwG.time = {.minimum = 2, .maximum = 3};
    graphs.cwG.voltage = {.minimum = 1, .maximum = 4};
    alignWithCurrent(graphs.controls());
    for (const FakeGraph* graph : graphs.all()) {
        EXPECT_EQ(graph->time.minimum, 2);
        EXPECT_EQ(graph->time.maximum, 3);
        EXPECT_EQ(graph->voltage.minimum, 1);
        EXPECT_EQ(graph->voltage.maximum, 4);
    }
}

// Press and hold ------------------------------------------------------------------------------------------------------

TEST_F(ZoomTest, APressZoomsAllThreeOnceAndEachTickOnceMoreUntilTheRelease) {
    ASSERT_TRUE(zoom.cwG_MouseDown(ZoomCommands::leftButton, 5, 0));
    EXPECT_TRUE(zoom.state().timerRunning);
    EXPECT_TRUE(zoom.state().ZoomingIn);
    EXPECT_FALSE(zoom.state().ZoomingOut);
    for (const FakeGraph* graph : graphs.all())
        EXPECT_FLOAT_EQ(static_cast<float>(graph->time.maximum), 9);
    ASSERT_TRUE(zoom.tmrZoom_Timer());
    for (const FakeGraph* graph : graphs.all())
        EXPECT_FLOAT_EQ(static_cast<float>(graph->time.maximum), 8.2F);
    zoom.cwG_MouseUp();
    EXPECT_FALSE(zoom.state().timerRunning);
    ASSERT_TRUE(zoom.tmrZoom_Timer());
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.maximum), 8.2F);
}

TEST_F(ZoomTest, TheRightButtonZoomsOut) {
    ASSERT_TRUE(zoom.cwG_MouseDown(ZoomCommands::rightButton, 5, 0));
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.maximum), 11);
    EXPECT_TRUE(zoom.state().ZoomingOut);
}

TEST_F(ZoomTest, AHeldZoomFollowsThePointer) {
    ASSERT_TRUE(zoom.cwG_MouseDown(ZoomCommands::leftButton, 5, 0));
    zoom.cwG_MouseMove(0, 1, 1);
    EXPECT_EQ(zoom.state().ZoomX, 5) << "no button is held";
    zoom.cwG_MouseMove(ZoomCommands::leftButton, 9, 0);
    ASSERT_TRUE(zoom.tmrZoom_Timer());
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.minimum), 3.4F); // 1..9 at its right edge
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.maximum), 9.8F);
}

TEST_F(ZoomTest, BothButtonsZoomInThenOutAndEitherReleaseEndsBoth) {
    ASSERT_TRUE(zoom.cwG_MouseDown(ZoomCommands::leftButton, 5, 0));
    ASSERT_TRUE(zoom.cwG_MouseDown(ZoomCommands::rightButton, 5, 0));
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.maximum - graphs.cwG.time.minimum), 9.6F);
    ASSERT_TRUE(zoom.tmrZoom_Timer());
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.maximum - graphs.cwG.time.minimum), 9.216F);
    zoom.cwG_MouseUp();
    EXPECT_FALSE(zoom.state().ZoomingIn);
    EXPECT_FALSE(zoom.state().ZoomingOut);
    EXPECT_FALSE(zoom.state().timerRunning);
}

TEST_F(ZoomTest, AGraphThatCannotBeZoomedEndsThePress) {
    graphs.cwGLast.voltage = {.minimum = 1, .maximum = 1};
    EXPECT_FALSE(zoom.cwG_MouseDown(ZoomCommands::leftButton, 5, 0));
    EXPECT_FLOAT_EQ(static_cast<float>(graphs.cwG.time.maximum), 9);
    EXPECT_EQ(graphs.cwGAvg.time.maximum, 10);
    EXPECT_FALSE(zoom.state().ZoomingIn);
    EXPECT_FALSE(zoom.state().timerRunning);
}

// Commands ------------------------------------------------------------------------------------------------------------

TEST_F(ZoomTest, StartsDisabledWithTheModeThatReportsEvents) {
    EXPECT_FALSE(zoom.state().graphEnabled);
    EXPECT_EQ(zoom.state().trackMode, 1);
    EXPECT_FALSE(zoom.state().panButtonEnabled);
    EXPECT_FALSE(zoom.state().MouseZooms);
}

TEST_F(ZoomTest, MouseZoomsEnablesTheGraphAndBringsPressAndHoldBackAfterPanning) {
    zoom.mnuMouseZooms_Click();
    EXPECT_TRUE(zoom.state().MouseZooms);
    EXPECT_TRUE(zoom.state().graphEnabled);
    zoom.mnuMousePans_Click();
    EXPECT_TRUE(zoom.state().MousePans);
    EXPECT_EQ(zoom.state().trackMode, 3);
    zoom.mnuMousePans_Click();
    EXPECT_EQ(zoom.state().trackMode, 0);
    zoom.mnuMouseZooms_Click();
    EXPECT_FALSE(zoom.state().graphEnabled);
    EXPECT_EQ(zoom.state().trackMode, 0);
    zoom.mnuMouseZooms_Click();
    EXPECT_EQ(zoom.state().trackMode, 1);
}

TEST_F(ZoomTest, ZoomAreaTogglesTheRectangle) {
    zoom.mnuZooms_Click();
    EXPECT_TRUE(zoom.state().zoomsArea);
    EXPECT_TRUE(zoom.state().graphEnabled);
    EXPECT_EQ(zoom.state().trackMode, 6);
    zoom.mnuZooms_Click();
    EXPECT_FALSE(zoom.state().graphEnabled);
    EXPECT_EQ(zoom.state().trackMode, 1);
}

TEST_F(ZoomTest, TheToolBarZoomsPansAndResets) {
    zoom.tbZoom_Click();
    EXPECT_TRUE(zoom.state().graphEnabled);
    EXPECT_EQ(zoom.state().trackMode, 6);
    EXPECT_TRUE(zoom.state().panButtonEnabled);
    zoom.tbPan_Click();
    EXPECT_EQ(zoom.state().trackMode, 3);
    bool graphWasEnabled = true;
    bool panWasEnabled = false;
    ASSERT_TRUE(zoom.tbReset_Click([&]() -> Result<void> {
        graphWasEnabled = zoom.state().graphEnabled;
        panWasEnabled = zoom.state().panButtonEnabled;
        return {};
    }));
    EXPECT_FALSE(graphWasEnabled) << "the graph is disabled first";
    EXPECT_TRUE(panWasEnabled) << "the button comes last";
    EXPECT_FALSE(zoom.state().panButtonEnabled);
    EXPECT_EQ(zoom.state().trackMode, 0);
}

TEST_F(ZoomTest, AFailedResetLeavesThePanButton) {
    zoom.tbZoom_Click();
    EXPECT_FALSE(zoom.tbReset_Click([] { return Result<void>(Error{ErrorKind::InvalidValue, "no"}); }));
    EXPECT_TRUE(zoom.state().panButtonEnabled);
    EXPECT_EQ(zoom.state().trackMode, 6);
}

TEST_F(ZoomTest, TellsWhatTheMouseDoesWhicheverCommandBroughtItAbout) {
    EXPECT_EQ(zoom.state().tool(), GraphTool::None);
    zoom.mnuMouseZooms_Click();
    EXPECT_EQ(zoom.state().tool(), GraphTool::HoldToZoom);
    zoom.mnuMousePans_Click();
    EXPECT_EQ(zoom.state().tool(), GraphTool::Pan);
    zoom.tbZoom_Click();
    EXPECT_EQ(zoom.state().tool(), GraphTool::ZoomArea);
    zoom.tbPan_Click();
    EXPECT_EQ(zoom.state().tool(), GraphTool::Pan);
    zoom.mnuZooms_Click();
    EXPECT_EQ(zoom.state().tool(), GraphTool::ZoomArea);
    zoom.mnuZooms_Click();
    EXPECT_EQ(zoom.state().tool(), GraphTool::None);
    zoom.allowPanning();
    ASSERT_TRUE(zoom.tbReset_Click([] { return Result<void>(); }));
    EXPECT_EQ(zoom.state().tool(), GraphTool::None);
}

} // namespace
} // namespace tavex2::test
