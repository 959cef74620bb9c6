#include "display/Trials.h"
#include "display/ui/CWGraph.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavex2 {
namespace {

using test::makeTrial;
using Axis = CWGraph::Axis;

std::string description(const CWGraph& graph) {
    return graph.accessibleDescription().toStdString();
}

void fit(CWGraph& graph) {
    graph.rescaleOnce(Axis::Time);
    graph.rescaleOnce(Axis::Voltage);
}

TEST(GraphDescription, SaysThatThereIsNoData) {
    CWGraph graph;
    EXPECT_EQ(description(graph), "no data");
}

TEST(GraphDescription, SaysWhatIsShownUnderTheGraphsName) {
    CWGraph graph;
    graph.setAccessibleName(QStringLiteral("Current trial"));
    graph.plot(makeTrial(12, 5001, [](int channel, std::int64_t i) { return i > 0          ? 0.0
                                                                            : channel == 3 ? -2.1
                                                                                           : 3.3; }),
               0.001);
    fit(graph);
    EXPECT_EQ(description(graph), "Current trial: 12 channels of 5001 samples, time 0 to 5 s, voltage -2.1 to 3.3 V");
    graph.clearPlots();
    EXPECT_EQ(description(graph), "Current trial: no data");
}

TEST(GraphDescription, SpeaksOfOneChannelInTheSingular) {
    CWGraph graph;
    graph.plot(makeTrial({1, 2}), 0.5);
    fit(graph);
    EXPECT_EQ(description(graph), "1 channel of 2 samples, time 0 to 0.5 s, voltage 1 to 2 V");
}

TEST(GraphDescription, AddsTheViewWhenItLeavesOutAPartOfTheData) {
    CWGraph graph;
    graph.plot(makeTrial({1, 2, 1, 2}), 1.0);
    fit(graph);
    graph.setAxisRange(Axis::Voltage, 0, 3);
    graph.setAxisRange(Axis::Time, 1, 2.5);
    EXPECT_EQ(description(graph),
              "1 channel of 4 samples, time 0 to 3 s, voltage 1 to 2 V; in view: time 1 to 2.5 s, voltage 0 to 3 V");
}

TEST(GraphDescription, GivesVoltagesAsTheFactorShowsThem) {
    CWGraph graph;
    graph.plot(makeTrial({-30, 60}), 1.0, 0.1);
    fit(graph);
    EXPECT_EQ(description(graph), "1 channel of 2 samples, time 0 to 1 s, voltage -3 to 6 V");
}

TEST(GraphDescription, LeavesOutVoltagesThatAreNoNumbers) {
    CWGraph graph;
    graph.plot(makeTrial({std::nan(""), std::nan("")}), 1.0);
    fit(graph);
    EXPECT_EQ(description(graph), "1 channel of 2 samples, time 0 to 1 s");
}

TEST(Graph, TakesTheKeyboardFocusByTabAndByMouse) {
    CWGraph graph;
    EXPECT_EQ(graph.focusPolicy(), Qt::StrongFocus);
}

} // namespace
} // namespace tavex2
