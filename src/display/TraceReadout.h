#pragma once

#include "display/TrialPyramid.h"

#include <optional>
#include <string>

namespace tavex2 {

/// The sample that a pointer is nearest to.
struct TraceReadout {
    int position = 0; ///< in the channel list
    double seconds = 0;
    double volts = 0;
};

/// Of all channels' samples at the time nearest to `seconds` the one nearest to `volts`; sample i lies at i x
/// `sampleIntervalSeconds`, its value is multiplied by `valueFactor`. No value beside the data or where all are NaN.
std::optional<TraceReadout> nearestSample(const TrialPyramid& trial, double sampleIntervalSeconds, double valueFactor,
                                          double seconds, double volts);

/// How a read-out is written.
struct ReadoutFormat {
    bool inSeconds = true; ///< else milliseconds
    bool inVolts = true;   ///< else millivolts
    double sampleIntervalSeconds = 1;
    double voltSpan = 20; ///< of the view; a five-thousandth of it can be told apart
    int channel = 0;      ///< number to show
};

/// A read-out in words: "0.523 s, -1.2345 V, channel 3".
std::string readoutText(const TraceReadout& readout, const ReadoutFormat& format);

} // namespace tavex2
