#include "display/Trials.h"
#include "display/ui/CWGraph.h"
#include "display/ui/LabelScaleTicker.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavex2 {
namespace {

using test::makeTrial;
using Axis = CWGraph::Axis;

double number(const CWGraph& graph, const char* property) {
    return graph.property(property).toDouble();
}

TEST(GraphAxes, AreReadAndWrittenAsProperties) {
    CWGraph graph;
    EXPECT_TRUE(graph.setProperty("xMinimum", 0.25));
    EXPECT_TRUE(graph.setProperty("xMaximum", 4.5));
    EXPECT_TRUE(graph.setProperty("yMinimum", -3.0));
    EXPECT_TRUE(graph.setProperty("yMaximum", 2.0));
    EXPECT_EQ(graph.axisMinimum(Axis::Time), 0.25);
    EXPECT_EQ(graph.axisMaximum(Axis::Time), 4.5);
    EXPECT_EQ(graph.axisMinimum(Axis::Voltage), -3.0);
    EXPECT_EQ(graph.axisMaximum(Axis::Voltage), 2.0);

    graph.setAxisRange(Axis::Time, 1, 2);
    graph.setAxisMinimum(Axis::Voltage, -1);
    graph.setAxisMaximum(Axis::Voltage, 1.5);
    EXPECT_EQ(number(graph, "xMinimum"), 1);
    EXPECT_EQ(number(graph, "xMaximum"), 2);
    EXPECT_EQ(number(graph, "yMinimum"), -1);
    EXPECT_EQ(number(graph, "yMaximum"), 1.5);
}

TEST(GraphAxes, HaveCaptionsAsProperties) {
    CWGraph graph;
    EXPECT_TRUE(graph.setProperty("xCaption", QStringLiteral("Last Trial  (seconds)")));
    graph.setAxisCaption(Axis::Voltage, QStringLiteral("Voltage (volts)"));
    EXPECT_EQ(graph.axisCaption(Axis::Time), QStringLiteral("Last Trial  (seconds)"));
    EXPECT_EQ(graph.property("yCaption").toString(), QStringLiteral("Voltage (volts)"));
    EXPECT_EQ(graph.xAxis->label(), QStringLiteral("Last Trial  (seconds)"));
}

TEST(GraphAxes, ComeWithTheTrackingModeOneAndTheNumberOfPlots) {
    CWGraph graph;
    EXPECT_EQ(graph.property("trackMode").toInt(), 1);
    EXPECT_TRUE(graph.setProperty("trackMode", 6));
    EXPECT_EQ(graph.trackMode(), 6);
    EXPECT_EQ(graph.property("plotCount").toInt(), 0);
    graph.plot(makeTrial(12, 10, [](int, std::int64_t) { return 0.0; }), 1.0);
    EXPECT_EQ(graph.property("plotCount").toInt(), 12);
    EXPECT_FALSE(graph.setProperty("plotCount", 3));
}

TEST(GraphAxes, NameTheSixteenPlots) {
    CWGraph graph;
    for (int k = 0; k < 16; ++k)
        EXPECT_EQ(graph.plottable(k)->name(), QStringLiteral("Plot-%1").arg(k + 1));
}

TEST(GraphAxes, TakeLimitsTheWrongWayRoundAsTheyAre) {
    CWGraph graph;
    graph.setAxisRange(Axis::Voltage, 5, -5);
    EXPECT_EQ(graph.yMinimum(), 5);
    EXPECT_EQ(graph.yMaximum(), -5);
    EXPECT_TRUE(graph.yAxis->rangeReversed());
    graph.setAxisRange(Axis::Voltage, -5, 5);
    EXPECT_FALSE(graph.yAxis->rangeReversed());
}

TEST(GraphAxes, TakeLimitsWithoutExtentAsTheyAre) {
    CWGraph graph;
    graph.setAxisRange(Axis::Time, 2, 2);
    EXPECT_EQ(graph.xMinimum(), 2);
    EXPECT_EQ(graph.xMaximum(), 2);
    EXPECT_NEAR(graph.xAxis->range().lower, 2, 1e-8) << "nothing else is in the picture";
    EXPECT_NEAR(graph.xAxis->range().upper, 2, 1e-8);
    graph.setAxisMaximum(Axis::Time, 3);
    EXPECT_EQ(graph.xMinimum(), 2);
    EXPECT_EQ(graph.xAxis->range(), QCPRange(2, 3));
}

TEST(GraphAxes, IgnoreLimitsThatAreNoNumbers) {
    CWGraph graph;
    graph.setAxisRange(Axis::Time, 1, 2);
    graph.setAxisRange(Axis::Time, std::nan(""), 3);
    graph.setAxisMaximum(Axis::Time, INFINITY);
    EXPECT_EQ(graph.xMinimum(), 1);
    EXPECT_EQ(graph.xMaximum(), 2);
}

TEST(GraphAxes, FollowWhatTheUserDragsThemTo) {
    CWGraph graph;
    graph.setAxisRange(Axis::Time, 0, 1);
    graph.xAxis->moveRange(0.5);
    EXPECT_EQ(graph.xMinimum(), 0.5);
    EXPECT_EQ(graph.xMaximum(), 1.5);
    graph.setAxisRange(Axis::Voltage, 4, 0);
    graph.yAxis->moveRange(1);
    EXPECT_EQ(graph.yMinimum(), 5);
    EXPECT_EQ(graph.yMaximum(), 1);
}

TEST(GraphAxes, RescaleOnceToThePlottedData) {
    CWGraph graph;
    graph.plot(makeTrial(2, 501, [](int channel, std::int64_t i) { return i == 7 ? 1.0 + channel : 0.0; }), 0.01);
    EXPECT_EQ(graph.xMaximum(), 1) << "plotting alone must not move an axis";
    graph.rescaleOnce(Axis::Time);
    EXPECT_EQ(graph.xMinimum(), 0);
    EXPECT_DOUBLE_EQ(graph.xMaximum(), 5);
    graph.rescaleOnce(Axis::Voltage);
    EXPECT_LT(graph.yMinimum(), 0);
    EXPECT_GT(graph.yMinimum(), -0.3);
    EXPECT_GT(graph.yMaximum(), 2);
    EXPECT_LT(graph.yMaximum(), 2.3);

    graph.plot(makeTrial({0, 50}), 1.0);
    EXPECT_LT(graph.yMaximum(), 2.3) << "once means once";
}

TEST(GraphAxes, RescaleToTheDataAsTheFactorShowsThem) {
    CWGraph graph;
    graph.plot(makeTrial({-40, 40}), 1.0, 0.25);
    graph.rescaleOnce(Axis::Voltage);
    EXPECT_EQ(graph.yMinimum(), -11);
    EXPECT_EQ(graph.yMaximum(), 11);
}

TEST(GraphAxes, StayWhenThereIsNothingToRescaleTo) {
    CWGraph graph;
    graph.setAxisRange(Axis::Time, 1, 2);
    graph.setAxisRange(Axis::Voltage, 3, 4);
    graph.rescaleOnce(Axis::Time);
    graph.rescaleOnce(Axis::Voltage);
    graph.plot(makeTrial({std::nan(""), std::nan("")}), 1.0);
    graph.rescaleOnce(Axis::Voltage);
    EXPECT_EQ(graph.xMaximum(), 2);
    EXPECT_EQ(graph.yMinimum(), 3);
    EXPECT_EQ(graph.yMaximum(), 4);
}

TEST(GraphAxes, FollowEveryPlotWhileAutoscalingIsOn) {
    CWGraph graph;
    EXPECT_FALSE(graph.autoScale(Axis::Voltage));
    graph.setAutoScale(Axis::Voltage, true);
    graph.setAutoScale(Axis::Time, true);
    graph.plot(makeTrial({-10, 10}), 1.0);
    EXPECT_EQ(graph.yMaximum(), 11);
    graph.plot(makeTrial({-40, 0, 40}), 1.0);
    EXPECT_EQ(graph.yMaximum(), 44);
    EXPECT_EQ(graph.xMaximum(), 2);
    graph.setAutoScale(Axis::Voltage, false);
    graph.plot(makeTrial({-1, 1}), 1.0);
    EXPECT_EQ(graph.yMaximum(), 44);
    EXPECT_EQ(graph.xMaximum(), 1);
}

TEST(GraphAxes, RescaleToTheFiniteSamplesOfATrialWithAnInfiniteOne) {
    CWGraph graph;
    graph.plot(makeTrial({-10, INFINITY, 10, -INFINITY, std::nan("")}), 1.0);
    graph.rescaleOnce(Axis::Voltage);
    EXPECT_EQ(graph.yMinimum(), -11);
    EXPECT_EQ(graph.yMaximum(), 11);
}

/// The texts at the voltage axis's ticks, and where the ticks are.
struct Ticks {
    QStringList labels;
    QVector<double> volts;
};

Ticks voltageTicks(CWGraph& graph) {
    Ticks ticks;
    QVector<QString> labels;
    graph.yAxis->ticker()->generate(graph.yAxis->range(), QLocale::c(), QLatin1Char('g'), 6, ticks.volts, nullptr,
                                    &labels);
    ticks.labels = QStringList(labels.begin(), labels.end());
    return ticks;
}

TEST(GraphAxes, MultiplyOnlyTheLabelsByTheLabelScaleExpression) {
    CWGraph graph;
    graph.setAxisRange(Axis::Voltage, -0.004, 0.004);
    for (const char* unchanged : {"", "*1"}) {
        graph.setLabelScaleExpression(Axis::Voltage, QLatin1String(unchanged));
        EXPECT_TRUE(voltageTicks(graph).labels.contains(QStringLiteral("0.002")));
    }
    graph.setLabelScaleExpression(Axis::Voltage, QStringLiteral("*1000"));
    EXPECT_EQ(graph.labelScaleExpression(Axis::Voltage), QStringLiteral("*1000"));
    const Ticks ticks = voltageTicks(graph);
    const auto two = ticks.labels.indexOf(QStringLiteral("2"));
    ASSERT_GE(two, 0);
    EXPECT_NEAR(ticks.volts[two], 0.002, 1e-12);
    EXPECT_EQ(graph.yMinimum(), -0.004);
    EXPECT_EQ(graph.yMaximum(), 0.004);
}

TEST(GraphAxes, PutTicksAtRoundNumbersOfTheUnitShown) {
    CWGraph graph;
    graph.setAxisRange(Axis::Voltage, -0.0123, 0.0456);
    graph.setLabelScaleExpression(Axis::Voltage, QStringLiteral("*1000"));
    for (const double volts : voltageTicks(graph).volts) {
        const double millivolts = volts * 1000;
        EXPECT_NEAR(millivolts, std::round(millivolts / 2.5) * 2.5, 1e-9);
    }
}

TEST(GraphAxes, KeepTheirLabelScaleWhenTheExpressionIsNone) {
    CWGraph graph;
    graph.setLabelScaleExpression(Axis::Time, QStringLiteral("*1000"));
    graph.setLabelScaleExpression(Axis::Time, QStringLiteral("sin(x)"));
    EXPECT_EQ(graph.labelScaleExpression(Axis::Time), QStringLiteral("*1000"));
}

TEST(GraphAxes, WriteDifferentNumbersAtDifferentTicks) {
    CWGraph graph;
    graph.setAxisRange(Axis::Voltage, 45.67875, 45.67895);
    const QStringList labels = voltageTicks(graph).labels;
    EXPECT_GE(labels.size(), 4);
    EXPECT_EQ(QSet<QString>(labels.begin(), labels.end()).size(), labels.size())
        << labels.join(QLatin1Char(' ')).toStdString();
    EXPECT_TRUE(labels.contains(QStringLiteral("45.67885"))) << labels.join(QLatin1Char(' ')).toStdString();
}

TEST(GraphAxes, ShowEqualLimitsAsTheOneNumberThatTheyAre) {
    CWGraph graph;
    graph.setAxisRange(Axis::Voltage, 45.6788, 45.6788);
    EXPECT_EQ(voltageTicks(graph).labels, QStringList{QStringLiteral("45.6788")});
    graph.setLabelScaleExpression(Axis::Voltage, QStringLiteral("*1000"));
    EXPECT_EQ(voltageTicks(graph).labels, QStringList{QStringLiteral("45678.8")});
    graph.setAxisRange(Axis::Voltage, 0, 1);
    EXPECT_GT(voltageTicks(graph).labels.size(), 2);
}

} // namespace
} // namespace tavex2
