#include "display/ui/RealTimePlot.h"

#include <utility>

namespace tavex2 {

namespace {

/// Time for mouse and keys between two pictures.
constexpr int tickMs = 15;

} // namespace

RealTimePlot::RealTimePlot(CWGraph& graph, QObject* parent) : QObject(parent), m_graph(graph) {
    m_tick.setSingleShot(true);
    m_tick.setInterval(tickMs);
    connect(&m_tick, &QTimer::timeout, this, &RealTimePlot::draw);
}

void RealTimePlot::begin(double windowSeconds, bool followsData) {
    m_windowSeconds = windowSeconds;
    m_followsData = followsData;
    m_first = true;
}

void RealTimePlot::show(const TrialData& block, double sampleIntervalSeconds) {
    m_newest = block;
    m_sampleIntervalSeconds = sampleIntervalSeconds;
    if (!m_tick.isActive()) m_tick.start();
}

void RealTimePlot::end() {
    m_tick.stop();
    m_newest.reset();
}

void RealTimePlot::draw() {
    using Axis = CWGraph::Axis;
    m_graph.plot(std::exchange(m_newest, nullptr), m_sampleIntervalSeconds);
    if (std::exchange(m_first, false)) {
        m_graph.setNote(tr("Real time, not stored"));
        if (m_followsData) m_graph.setAxisRange(Axis::Time, 0, m_windowSeconds);
        Q_EMIT began();
    }
    if (!m_followsData || !m_graph.pyramid()) return;
    const AxisRange shown{m_graph.axisMinimum(Axis::Voltage), m_graph.axisMaximum(Axis::Voltage)};
    const AxisRange wanted = steadyVoltageRange(shown, m_graph.pyramid()->finite());
    if (!(wanted == shown)) m_graph.setAxisRange(Axis::Voltage, wanted.minimum, wanted.maximum);
}

} // namespace tavex2
