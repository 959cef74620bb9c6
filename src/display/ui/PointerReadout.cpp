#include "display/ui/PointerReadout.h"

#include "display/TraceReadout.h"

#include <utility>

namespace tavex2 {

PointerReadout::PointerReadout(const SetupOptions& units, QObject* parent) : QObject(parent), m_units(units) {}

void PointerReadout::watch(CWGraph& graph, std::function<int(int position)> channelAt) {
    connect(&graph, &CWGraph::pointerAt, this, [this, &graph, channel = std::move(channelAt)](double x, double y) {
        Q_EMIT changed(textAt(graph, x, y, channel));
    });
    connect(&graph, &CWGraph::pointerLeft, this, [this] { Q_EMIT changed(QString()); });
}

QString PointerReadout::textAt(const CWGraph& graph, double x, double y,
                               const std::function<int(int)>& channelAt) const {
    if (!graph.pyramid()) return {};
    const auto found = nearestSample(*graph.pyramid(), graph.sampleIntervalSeconds(), graph.valueFactor(), x, y);
    if (!found) return {};
    return QString::fromStdString(readoutText(*found, {.inSeconds = m_units.DisplayInSeconds,
                                                       .inVolts = m_units.DisplayInVolts,
                                                       .sampleIntervalSeconds = graph.sampleIntervalSeconds(),
                                                       .voltSpan = graph.yMaximum() - graph.yMinimum(),
                                                       .channel = channelAt(found->position)}));
}

} // namespace tavex2
