#include "display/Zoom.h"

#include <algorithm>
#include <cmath>

namespace tavex2 {

namespace {

using Axis = GraphControl::Axis;

/// One axis of a zoom step, in single precision.
struct ZoomedAxis {
    float minimum = 0;
    float maximum = 0;
    bool finite() const { return std::isfinite(minimum) && std::isfinite(maximum); }
};

ZoomedAxis zoomed(const GraphControl& graph, Axis axis, double pointer, float factor) {
    constexpr float shiftShare = 0.2F;
    const auto minimum = static_cast<float>(graph.axisMinimum(axis));
    const float span = static_cast<float>(graph.axisMaximum(axis)) - minimum;
    const float newSpan = span * factor;
    const float shift = shiftShare * span;
    const float centre = minimum + span / 2;
    // -1 at the low edge, +1 at the high one; not a number where the span is zero.
    const float toward = (static_cast<float>(pointer) - centre) / (span / 2);
    return {centre - newSpan / 2 + toward * shift, centre + newSpan / 2 + toward * shift};
}

double share(const GraphControl& graph, Axis axis, double value) {
    const double minimum = graph.axisMinimum(axis);
    const double result = (value - minimum) / (graph.axisMaximum(axis) - minimum);
    return std::isfinite(result) ? result : 0.5;
}

/// Limits between which numbers still tell neighbouring pixels apart.
bool drawable(double minimum, double maximum) {
    constexpr double finest = 1e-12;
    constexpr double widest = 1e12;
    const double span = std::abs(maximum - minimum);
    const double size = std::max(std::abs(minimum), std::abs(maximum));
    return span >= finest && span >= size * 1e-10 && size <= widest;
}

void zoomAxisAround(GraphControl& graph, Axis axis, double place, double factor) {
    const double minimum = graph.axisMinimum(axis);
    const double span = graph.axisMaximum(axis) - minimum;
    const double fixed = minimum + place * span;
    const double newMinimum = fixed - place * span * factor;
    const double newMaximum = newMinimum + span * factor;
    if (drawable(newMinimum, newMaximum)) graph.setAxisRange(axis, newMinimum, newMaximum);
}

void moveAxis(GraphControl& graph, Axis axis, double share) {
    const double minimum = graph.axisMinimum(axis);
    const double maximum = graph.axisMaximum(axis);
    const double shift = share * (maximum - minimum);
    graph.setAxisRange(axis, minimum + shift, maximum + shift);
}

} // namespace

Result<void> ZoomGraph(GraphControl& graph, double x, double y, float factor) {
    const ZoomedAxis volts = zoomed(graph, Axis::Voltage, y, factor);
    const ZoomedAxis time = zoomed(graph, Axis::Time, x, factor);
    if (!volts.finite() || !time.finite())
        return Error{ErrorKind::InvalidValue,
                     "The graph cannot be zoomed any further. Autoscale graphs (Ctrl+0) shows all of it again."};
    graph.setAxisMaximum(Axis::Voltage, static_cast<double>(volts.maximum));
    graph.setAxisMinimum(Axis::Voltage, static_cast<double>(volts.minimum));
    graph.setAxisMaximum(Axis::Time, static_cast<double>(time.maximum));
    graph.setAxisMinimum(Axis::Time, static_cast<double>(time.minimum));
    return {};
}

Result<void> ZoomIn(GraphControl& graph, double x, double y) {
    return ZoomGraph(graph, x, y, 0.8F);
}

Result<void> ZoomOut(GraphControl& graph, double x, double y) {
    return ZoomGraph(graph, x, y, 1.2F);
}

ViewPlace placeInView(const GraphControl& graph, double x, double y) {
    return {share(graph, Axis::Time, x), share(graph, Axis::Voltage, y)};
}

void zoomAround(GraphControl& graph, const ViewPlace& place, double factor) {
    zoomAxisAround(graph, Axis::Time, place.time, factor);
    zoomAxisAround(graph, Axis::Voltage, place.voltage, factor);
}

void moveView(GraphControl& graph, double timeShare, double voltageShare) {
    moveAxis(graph, Axis::Time, timeShare);
    moveAxis(graph, Axis::Voltage, voltageShare);
}

void alignWithCurrent(const GraphControls& graphs) {
    for (const Axis axis : {Axis::Time, Axis::Voltage})
        for (GraphControl* other : {&graphs.cwGLast, &graphs.cwGAvg})
            other->setAxisRange(axis, graphs.cwG.axisMinimum(axis), graphs.cwG.axisMaximum(axis));
}

} // namespace tavex2
