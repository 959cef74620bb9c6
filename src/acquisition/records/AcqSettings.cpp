#include "acquisition/records/AcqSettings.h"

#include "base/Rounding.h"

namespace tavex2 {

namespace {

constexpr double largestExactCount = 9007199254740992.0; // 2^53

/// Rounds a count of scans; 0 for a value that no trial can have.
std::int64_t scanCount(double scans) {
    if (!(scans >= 0.0 && scans < largestExactCount)) return -1;
    return roundHalfEven(scans);
}

} // namespace

std::int64_t samplesPerTrial(const SamplingSettings& sampling) {
    return scanCount(static_cast<double>(sampling.Duration) * static_cast<double>(sampling.Rate)) + 1;
}

std::int64_t preTriggerScans(const SamplingSettings& sampling, const TriggerSettings& trigger) {
    const double scans = static_cast<double>(trigger.Pretrigger) / 100.0 * static_cast<double>(sampling.Rate) *
                         static_cast<double>(sampling.Duration);
    return scanCount(scans) > 0 ? scanCount(scans) : 0;
}

bool SettingsCompatible(const SamplingSettings& a, const SamplingSettings& b) {
    return a.Duration == b.Duration && a.NumChannels == b.NumChannels && a.NumSamples == b.NumSamples &&
           a.Rate == b.Rate;
}

} // namespace tavex2
