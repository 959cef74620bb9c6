#include "display/AxisRange.h"

#include <cmath>

namespace tavex2 {

namespace {

constexpr double marginShare = 0.05;
constexpr double smallestSpanVolts = 1e-12;

/// Decimal places at which a span of this size is rounded to within some hundredths of itself.
int roundingDecimals(double span) {
    return 2 - static_cast<int>(std::floor(std::log10(span)));
}

/// Rounds to multiples of 2 in the given decimal place with `round` (floor or ceil). Dividing by a whole power of ten
/// gives the double nearest to the decimal number, so limits read 0.3 and not 0.30000000000000004.
template <class Round>
double roundedAt(double value, int decimals, Round round) {
    const double power = std::pow(10.0, std::abs(decimals));
    return decimals >= 0 ? round(value * power / 2) * 2 / power : round(value / power / 2) * 2 * power;
}

} // namespace

std::optional<AxisRange> voltageRange(const Extent& volts) {
    if (volts.empty() || !std::isfinite(volts.highest - volts.lowest)) return std::nullopt;
    double low = volts.lowest;
    double high = volts.highest;
    const double size = std::max(std::abs(low), std::abs(high));
    if (high - low < smallestSpanVolts || high - low < size * 1e-9) {
        const double band = size < 1e-6 ? 1.0 : size * 0.1;
        low -= band;
        high += band;
    }
    const double margin = (high - low) * marginShare;
    const int decimals = roundingDecimals(high - low);
    const AxisRange range{roundedAt(low - margin, decimals, [](double x) { return std::floor(x); }),
                          roundedAt(high + margin, decimals, [](double x) { return std::ceil(x); })};
    if (!std::isfinite(range.maximum - range.minimum)) return std::nullopt;
    return range;
}

AxisRange steadyVoltageRange(const AxisRange& shown, const Extent& volts) {
    const auto wanted = voltageRange(volts);
    if (!wanted) return shown;
    const bool holds = shown.minimum <= volts.lowest && shown.maximum >= volts.highest;
    const bool filled = 2 * (wanted->maximum - wanted->minimum) >= shown.maximum - shown.minimum;
    return holds && filled ? shown : *wanted;
}

AxisRange timeRange(std::int64_t samples, double sampleIntervalSeconds) {
    return {0, static_cast<double>(std::max<std::int64_t>(samples - 1, 1)) * sampleIntervalSeconds};
}

double sampleIntervalSeconds(const SamplingSettings& sampling) {
    return sampling.Rate > 0 ? 1.0 / static_cast<double>(sampling.Rate) : 1.0;
}

float fullTimeExtentSeconds(const SamplingSettings& sampling) {
    return static_cast<float>(sampling.Repeat) * sampling.Duration;
}

} // namespace tavex2
