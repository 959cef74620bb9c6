#pragma once

#include "display/ui/CWGraph.h"

#include <array>

namespace tavex2::bench {

/// A stretch of the time axis and one of the voltage axis.
struct View {
    AxisRange seconds;
    AxisRange volts;

    /// The part of this view's time that is `share` of it long, about the point 37 % along it.
    View timeZoomed(double share) const;
    /// The part of this view's voltage that is `share` of it high, about its middle.
    View voltageZoomed(double share) const;
};

/// The same trial in two windows of 1600 x 500: drawn by the program, and by the library's own QCPGraph as it comes
/// (adaptive sampling and smoothing on) in the same frame, with the same axes, limits, colours and pens. A third window
/// is the frame alone, without traces: what a redraw cannot take less than.
/// User-interface thread.
class GraphPair {
  public:
    explicit GraphPair(const TrialData& trial);

    /// Everything of the trial.
    const View& full() const { return m_full; }

    CWGraph& own() { return m_own; }
    CWGraph& peer() { return m_peer; }
    CWGraph& empty() { return m_empty; }
    /// How many device pixels a unit of the windows has.
    double scale() const { return m_own.devicePixelRatioF(); }

    /// Shows the view and returns how many seconds of processor time that took: setting the limits, drawing and copying
    /// to the window.
    static double showSeconds(CWGraph& graph, const View& view);

  private:
    CWGraph m_own;
    CWGraph m_peer;
    CWGraph m_empty;
    View m_full;
};

/// To be called before the application is made: draws without a display unless the environment names a platform.
void useNoDisplay();

} // namespace tavex2::bench
