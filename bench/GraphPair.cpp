#include "GraphPair.h"

#include "Comparisons.h"
#include "display/TraceColours.h"

#include <QApplication>
#include <QWindow>

#include <stdexcept>

namespace tavex2::bench {

namespace {

constexpr QSize windowSize(1600, 500);
/// 1 kHz, what heart and muscle are sampled with.
constexpr double sampleIntervalSeconds = 1e-3;

AxisRange part(const AxisRange& whole, double share, double about) {
    const double span = whole.maximum - whole.minimum;
    const double middle = whole.minimum + about * span;
    return {middle - span * share * about, middle + span * share * (1 - about)};
}

void addStockGraph(CWGraph& graph, const TrialArray& trial, int channel) {
    QVector<QCPGraphData> points(trial.samples());
    trial.visitChannel(channel, [&points](auto samples) {
        for (std::size_t i = 0; i < samples.size(); ++i)
            points[static_cast<qsizetype>(i)] = {static_cast<double>(i) * sampleIntervalSeconds, samples[i]};
    });
    const Rgb rgb = traceColour(channel);
    QCPGraph* stock = graph.addGraph();
    stock->data()->set(points, true);
    stock->setPen(QPen(QColor(rgb.red, rgb.green, rgb.blue)));
}

void show(CWGraph& graph) {
    graph.resize(windowSize);
    graph.show();
    QApplication::processEvents();
    if (!graph.windowHandle() || !graph.windowHandle()->isExposed() || graph.size() != windowSize)
        throw std::runtime_error("The platform does not show the windows in their size; nothing would be measured.");
}

} // namespace

View View::timeZoomed(double share) const {
    return {part(seconds, share, 0.37), volts};
}

View View::voltageZoomed(double share) const {
    return {seconds, part(volts, share, 0.5)};
}

GraphPair::GraphPair(const TrialData& trial) {
    m_own.plot(trial, sampleIntervalSeconds);
    m_own.rescaleOnce(CWGraph::Axis::Time);
    m_own.rescaleOnce(CWGraph::Axis::Voltage);
    for (int channel = 0; channel < trial->channels(); ++channel)
        addStockGraph(m_peer, *trial, channel);
    m_full = {{m_own.xMinimum(), m_own.xMaximum()}, {m_own.yMinimum(), m_own.yMaximum()}};
    for (CWGraph* each : {&m_own, &m_peer, &m_empty})
        show(*each);
}

double GraphPair::showSeconds(CWGraph& graph, const View& view) {
    return processorSecondsOf([&] {
        graph.setAxisRange(CWGraph::Axis::Time, view.seconds.minimum, view.seconds.maximum);
        graph.setAxisRange(CWGraph::Axis::Voltage, view.volts.minimum, view.volts.maximum);
        graph.replot(QCustomPlot::rpImmediateRefresh);
    });
}

void useNoDisplay() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
}

} // namespace tavex2::bench
