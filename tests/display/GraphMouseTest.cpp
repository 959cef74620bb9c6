#include "display/Trials.h"
#include "display/ui/GraphCursors.h"
#include "support/WindowTesting.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace tavex2 {
namespace {

using test::makeTrial;
using Axis = CWGraph::Axis;

/// What a graph makes of presses and drags, by its tracking mode.
class GraphMouseTest : public testing::Test {
  protected:
    GraphMouseTest() {
        graph.resize(600, 400);
        graph.plot(makeTrial(1, 1001, [](int, std::int64_t i) { return i % 2 == 0 ? 1.0 : -1.0; }), 1e-3);
        graph.rescaleOnce(Axis::Time);
        graph.rescaleOnce(Axis::Voltage);
        graph.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&graph));
        graph.replot();
    }

    QRect area() const { return graph.axisRect()->rect(); }
    QPoint middle() const { return area().center(); }
    void drag(const QPoint& from, const QPoint& to) {
        QTest::mousePress(&graph, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, QPointF(to), graph.mapToGlobal(QPointF(to)), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&graph, &move);
        QTest::mouseRelease(&graph, Qt::LeftButton, {}, to);
    }

    CWGraph graph;
};

TEST_F(GraphMouseTest, WhereEventsAreReportedEveryPressCounts) {
    QSignalSpy presses(&graph, &CWGraph::mouseDown);
    QSignalSpy releases(&graph, &CWGraph::mouseUp);
    QSignalSpy doubleClicks(&graph, &CWGraph::doubleClicked);
    test::doubleClick(graph, middle());
    EXPECT_EQ(presses.count(), 2);
    EXPECT_EQ(releases.count(), 2);
    EXPECT_EQ(doubleClicks.count(), 0);
    graph.setTrackMode(6);
    test::doubleClick(graph, middle());
    EXPECT_EQ(doubleClicks.count(), 1);
}

TEST_F(GraphMouseTest, ShiftMakesNoDifferenceToTheLeftButton) {
    QSignalSpy presses(&graph, &CWGraph::mouseDown);
    QTest::mouseClick(&graph, Qt::LeftButton, Qt::ShiftModifier, middle());
    EXPECT_EQ(presses.count(), 1);
    QTest::mouseClick(&graph, Qt::RightButton, Qt::ShiftModifier, middle());
    EXPECT_EQ(presses.count(), 1) << "this asks for the menu";
}

TEST_F(GraphMouseTest, ARectangleIsCutAtTheEdgeOfThePlotArea) {
    graph.setTrackMode(6);
    const double left = graph.xMinimum();
    const double high = graph.yMaximum();
    drag(middle(), area().topLeft() - QPoint(30, 5));
    EXPECT_NEAR(graph.xMinimum(), left, 0.005);
    EXPECT_NEAR(graph.xMaximum(), 0.5, 0.01);
    EXPECT_NEAR(graph.yMaximum(), high, 0.02);
    EXPECT_LE(graph.yMaximum(), high + 1e-9);
}

TEST_F(GraphMouseTest, AFlatDragAndOneBesideThePlotAreaZoomNothing) {
    graph.setTrackMode(6);
    QSignalSpy moved(&graph, &CWGraph::viewDragged);
    drag(middle(), middle() + QPoint(100, 1));
    drag(middle(), middle() + QPoint(1, 100));
    drag(area().bottomLeft() + QPoint(10, 10), area().bottomLeft() + QPoint(200, 25));
    EXPECT_EQ(moved.count(), 0);
    drag(middle(), middle() + QPoint(100, 100));
    EXPECT_GT(moved.count(), 0);
}

TEST_F(GraphMouseTest, ADoubleClickLeavesTheCursorsWhereTheyWere) {
    GraphCursors cursors(graph);
    cursors.setSamples(1001, 1e-3);
    cursors.setSample(1, 1000);
    QTest::keyClick(&graph, Qt::Key_2);
    QSignalSpy doubleClicks(&cursors, &GraphCursors::doubleClicked);
    for (const QPoint& place : {middle() - QPoint(100, 0), area().bottomLeft() + QPoint(10, 20)}) {
        test::doubleClick(graph, place);
        EXPECT_EQ(cursors.sample(0), 0);
        EXPECT_EQ(cursors.sample(1), 1000);
        EXPECT_EQ(cursors.marked(), 1);
    }
    EXPECT_EQ(doubleClicks.count(), 2);
    QTest::mouseClick(&graph, Qt::LeftButton, {}, middle() - QPoint(100, 0));
    EXPECT_GT(cursors.sample(0), 100) << "a single click still brings the nearer one";
}

} // namespace
} // namespace tavex2
