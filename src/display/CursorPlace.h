#pragma once

#include <cstdint>

namespace tavex2 {

// Where a time lies among `samples` (at least one) samples at `rateHz` a second, the first one at 0 s; times beyond the
// data give the first or the last one. A time that is a sample's but for the rounding of an axis counts as that
// sample's.

std::int64_t sampleAtOrAfter(double seconds, double rateHz, std::int64_t samples);
std::int64_t sampleAtOrBefore(double seconds, double rateHz, std::int64_t samples);
std::int64_t nearestSample(double seconds, double rateHz, std::int64_t samples);

} // namespace tavex2
