#pragma once

#include "acquisition/records/AcqSettings.h"
#include "base/Result.h"
#include "display/GraphControl.h"

namespace tavex2 {

/// The command "Autoscale graphs": turns automatic scaling on, shows the full time extent of the settings (Repeat x
/// Duration) on all graphs, and fits their voltage axes to what is plotted. An extent that is no number is an
/// InvalidValue.
Result<void> mnuResetScale_Click(AcqSettings& settings, const GraphControls& graphs);

/// Shows the full time extent and fits the voltage axis, graph by graph; the settings stay.
Result<void> fitGraphs(const SamplingSettings& sampling, const GraphControls& graphs);

/// Labels the time axes in seconds or milliseconds.
void labelTime(bool inSeconds, const GraphControls& graphs);
/// Labels the voltage axes in volts or millivolts.
void labelVoltage(bool inVolts, const GraphControls& graphs);

} // namespace tavex2
