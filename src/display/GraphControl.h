#pragma once

#include <array>
#include <string>

namespace tavex2 {

/// A graph's axes as the logic moves and names them: CWGraph fulfils it in the windows. Values are seconds and volts
/// whatever the labels show. User-interface thread.
class GraphControl {
  public:
    /// The axes by their numbers: "XAxis" and "YAxis-1".
    enum class Axis { Time = 1, Voltage = 2 };

    virtual ~GraphControl() = default;

    virtual double axisMinimum(Axis axis) const = 0;
    virtual double axisMaximum(Axis axis) const = 0;
    virtual void setAxisMinimum(Axis axis, double minimum) = 0;
    virtual void setAxisMaximum(Axis axis, double maximum) = 0;
    /// Limits are taken as they are, the wrong way round and without extent too.
    virtual void setAxisRange(Axis axis, double minimum, double maximum) = 0;

    /// With autoscaling on the axis rescales itself whenever something is plotted.
    virtual void setAutoScale(Axis axis, bool on) = 0;
    /// Fits the axis to the plotted data; without data it stays.
    virtual void rescaleOnce(Axis axis) = 0;

    virtual void setAxisCaption(Axis axis, const std::string& caption) = 0;
    /// Only the numbers at the ticks are scaled: "" and "*1" show them as they are, "*1000" a thousand times.
    virtual void setLabelScaleExpression(Axis axis, const std::string& expression) = 0;
};

/// The main window's graphs. Whatever is done to all of them is done in this order.
struct GraphControls {
    GraphControl& cwG;
    GraphControl& cwGLast;
    GraphControl& cwGAvg;

    std::array<GraphControl*, 3> all() const { return {&cwG, &cwGLast, &cwGAvg}; }
};

} // namespace tavex2
