#include "display/TraceReadout.h"

#include "base/Decimal.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavex2 {

namespace {

/// Decimals that tell values of this distance apart.
int decimalsFor(double distance) {
    constexpr int most = 9;
    if (!(distance > 0) || !std::isfinite(distance)) return most;
    return std::clamp(static_cast<int>(std::ceil(-std::log10(distance) - 1e-9)), 0, most);
}

} // namespace

std::optional<TraceReadout> nearestSample(const TrialPyramid& trial, double sampleIntervalSeconds, double valueFactor,
                                          double seconds, double volts) {
    const double at = std::round(seconds / sampleIntervalSeconds);
    if (!(at >= 0 && at < static_cast<double>(trial.samples()))) return std::nullopt;
    const auto index = static_cast<std::int64_t>(at);
    std::optional<TraceReadout> nearest;
    double distance = std::numeric_limits<double>::infinity();
    for (int channel = 0; channel < trial.channels(); ++channel) {
        const double value = trial.channel(channel).sample(index) * valueFactor;
        if (!(std::abs(value - volts) < distance)) continue;
        distance = std::abs(value - volts);
        nearest = {channel, static_cast<double>(index) * sampleIntervalSeconds, value};
    }
    return nearest;
}

std::string readoutText(const TraceReadout& readout, const ReadoutFormat& format) {
    const double timeFactor = format.inSeconds ? 1 : 1000;
    const double voltFactor = format.inVolts ? 1 : 1000;
    const int timeDecimals = decimalsFor(format.sampleIntervalSeconds * timeFactor);
    const int voltDecimals = decimalsFor(std::abs(format.voltSpan) * voltFactor / 5000);
    return fixedDecimal(readout.seconds * timeFactor, timeDecimals) + (format.inSeconds ? " s, " : " ms, ") +
           fixedDecimal(readout.volts * voltFactor, voltDecimals) + (format.inVolts ? " V" : " mV") + ", channel " +
           std::to_string(format.channel);
}

} // namespace tavex2
