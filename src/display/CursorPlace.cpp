#include "display/CursorPlace.h"

#include <algorithm>
#include <cmath>

namespace tavex2 {

namespace {

/// Far below a sample, and above what single precision leaves of a time.
double tolerance(double place) {
    return std::min(0.01, 1e-6 * std::max(1.0, std::abs(place)));
}

std::int64_t inside(double place, std::int64_t samples) {
    return static_cast<std::int64_t>(std::clamp(place, 0.0, static_cast<double>(samples - 1)));
}

} // namespace

std::int64_t sampleAtOrAfter(double seconds, double rateHz, std::int64_t samples) {
    const double place = seconds * rateHz;
    return inside(std::ceil(place - tolerance(place)), samples);
}

std::int64_t sampleAtOrBefore(double seconds, double rateHz, std::int64_t samples) {
    const double place = seconds * rateHz;
    return inside(std::floor(place + tolerance(place)), samples);
}

std::int64_t nearestSample(double seconds, double rateHz, std::int64_t samples) {
    return inside(std::round(seconds * rateHz), samples);
}

} // namespace tavex2
