#pragma once

#include "display/GraphControl.h"

#include <map>
#include <string>
#include <vector>

namespace tavex2::test {

/// A graph without a window: keeps its axes and records what it was told.
class FakeGraph final : public GraphControl {
  public:
    struct AxisState {
        double minimum = 0;
        double maximum = 1;
        bool autoScale = true;
        int rescaled = 0;
        std::string caption = "not set";
        std::string expression = "not set";
    };
    AxisState time{.minimum = 0, .maximum = 2};
    AxisState voltage{.minimum = -10, .maximum = 10};
    std::vector<std::string> log;

    AxisState& of(Axis axis) { return axis == Axis::Time ? time : voltage; }
    const AxisState& of(Axis axis) const { return axis == Axis::Time ? time : voltage; }

    double axisMinimum(Axis axis) const override { return of(axis).minimum; }
    double axisMaximum(Axis axis) const override { return of(axis).maximum; }
    void setAxisMinimum(Axis axis, double minimum) override {
        of(axis).minimum = minimum;
        log.push_back(name(axis) + " minimum");
    }
    void setAxisMaximum(Axis axis, double maximum) override {
        of(axis).maximum = maximum;
        log.push_back(name(axis) + " maximum");
    }
    void setAxisRange(Axis axis, double minimum, double maximum) override {
        of(axis).minimum = minimum;
        of(axis).maximum = maximum;
        log.push_back(name(axis) + " range");
    }
    void setAutoScale(Axis axis, bool on) override { of(axis).autoScale = on; }
    void rescaleOnce(Axis axis) override {
        ++of(axis).rescaled;
        log.push_back(name(axis) + " rescaled");
    }
    void setAxisCaption(Axis axis, const std::string& caption) override { of(axis).caption = caption; }
    void setLabelScaleExpression(Axis axis, const std::string& expression) override {
        of(axis).expression = expression;
    }

  private:
    static std::string name(Axis axis) { return axis == Axis::Time ? "time" : "voltage"; }
};

/// The three graphs of a main window.
struct FakeGraphs {
    FakeGraph cwG;
    FakeGraph cwGLast;
    FakeGraph cwGAvg;

    GraphControls controls() { return {cwG, cwGLast, cwGAvg}; }
    std::vector<FakeGraph*> all() { return {&cwG, &cwGLast, &cwGAvg}; }
};

} // namespace tavex2::test
