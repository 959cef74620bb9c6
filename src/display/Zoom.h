#pragma once

#include "base/Result.h"
#include "display/GraphControl.h"

namespace tavex2 {

/// One step of the press-and-hold zoom: scales the view by `factor` about its centre and moves the centre toward the
/// pointer at (x s, y V) by up to a fifth of the old span. In single precision throughout. A view without extent, or
/// one that single precision cannot hold, is an InvalidValue and leaves the graph as it was.
Result<void> ZoomGraph(GraphControl& graph, double x, double y, float factor);
Result<void> ZoomIn(GraphControl& graph, double x, double y);  ///< ZoomGraph by 0.8
Result<void> ZoomOut(GraphControl& graph, double x, double y); ///< ZoomGraph by 1.2

/// A place in a view as shares of its extent: (0, 0) is the lower left corner, (1, 1) the upper right one.
struct ViewPlace {
    double time = 0.5;
    double voltage = 0.5;
};

/// By how much a notch of the wheel, or a key, scales a view.
inline constexpr double zoomNotchFactor = 0.8;

/// Where a point (x s, y V) lies in a graph's view; the middle where the view has no extent.
ViewPlace placeInView(const GraphControl& graph, double x, double y);

/// Scales the view by `factor` so that what lies at `place` stays there: the mouse wheel's and the keyboard's zoom. A
/// view that would become finer or wider than numbers can hold stays.
void zoomAround(GraphControl& graph, const ViewPlace& place, double factor);

/// Moves the view by shares of its extent; positive shares look at later times and higher voltages.
void moveView(GraphControl& graph, double timeShare, double voltageShare);

/// Gives the other graphs the limits of the first, so that the three stay aligned.
void alignWithCurrent(const GraphControls& graphs);

} // namespace tavex2
