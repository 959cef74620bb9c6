#include "display/Scale.h"

#include "display/AxisRange.h"

#include <cmath>
#include <string>

namespace tavex2 {

namespace {

using Axis = GraphControl::Axis;

} // namespace

Result<void> mnuResetScale_Click(AcqSettings& settings, const GraphControls& graphs) {
    settings.setup.DisplayAutoScale = true;
    return fitGraphs(settings.sampling, graphs);
}

Result<void> fitGraphs(const SamplingSettings& sampling, const GraphControls& graphs) {
    const float extent = fullTimeExtentSeconds(sampling);
    if (!std::isfinite(extent))
        return Error{
            ErrorKind::InvalidValue,
            "The time that the graphs are to show, repeats x duration, is no number. Correct it in the setup."};
    for (GraphControl* graph : graphs.all()) {
        graph->setAxisMinimum(Axis::Time, 0);
        graph->setAxisMaximum(Axis::Time, static_cast<double>(extent));
        graph->rescaleOnce(Axis::Voltage);
    }
    return {};
}

void labelTime(bool inSeconds, const GraphControls& graphs) {
    const std::string unit = inSeconds ? "(seconds)" : "(milliseconds)";
    graphs.cwG.setAxisCaption(Axis::Time, "Current Trial " + unit);
    graphs.cwGLast.setAxisCaption(Axis::Time, "Last Trial " + unit);
    graphs.cwGAvg.setAxisCaption(Axis::Time, "Saved Trials Average " + unit);
    for (GraphControl* graph : graphs.all())
        graph->setLabelScaleExpression(Axis::Time, inSeconds ? "" : "*1000");
}

void labelVoltage(bool inVolts, const GraphControls& graphs) {
    for (GraphControl* graph : graphs.all()) {
        graph->setLabelScaleExpression(Axis::Voltage, inVolts ? "" : "*1000");
        graph->setAxisCaption(Axis::Voltage, inVolts ? "Voltage (volts)" : "Voltage (millivolts)");
    }
}

} // namespace tavex2
