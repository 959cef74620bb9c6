#pragma once

#include "acquisition/records/AcqSettings.h"
#include "display/Extent.h"

#include <cstdint>
#include <optional>

namespace tavex2 {

/// The limits of an axis, in seconds or volts.
struct AxisRange {
    double minimum = 0;
    double maximum = 0;

    friend bool operator==(const AxisRange&, const AxisRange&) = default;
};

/// Limits that show all of the data with about 5 % to spare on either side, moved outward to round numbers. Constant
/// data get a band around their value. No value when there are no data or they are not finite.
std::optional<AxisRange> voltageRange(const Extent& volts);

/// Limits for data that change all the time: `shown` while it holds the data and they fill at least half of it, else
/// those that voltageRange() gives, so that a running view does not tremble.
AxisRange steadyVoltageRange(const AxisRange& shown, const Extent& volts);

/// The time that `samples` samples take up, from the first (at 0) to the last; a single sample gets one interval.
AxisRange timeRange(std::int64_t samples, double sampleIntervalSeconds);

/// Seconds from one sample to the next; 1 for a trial that knows no rate.
double sampleIntervalSeconds(const SamplingSettings& sampling);

/// Repeat x Duration in single precision, s: the time axis of a graph that follows the settings.
float fullTimeExtentSeconds(const SamplingSettings& sampling);

} // namespace tavex2
