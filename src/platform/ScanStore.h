#pragma once

#include "base/TrialArray.h"

#include <cstdint>
#include <limits>
#include <span>

namespace tavex2 {

/// The voltage range that samples are limited to. The initial one limits nothing.
struct VoltageLimits {
    double lower = -std::numeric_limits<double>::infinity();
    double upper = std::numeric_limits<double>::infinity();

    /// The nearest voltage inside the range; not-a-number stays as it is.
    double apply(double volts) const {
        if (volts < lower) return lower;
        return volts > upper ? upper : volts;
    }
};

/// Writes scans (channel after channel) into the columns of a float64 array that begin at sample `first`, limited to
/// `limits`. The caller sees to it that they fit.
void storeScans(std::span<const double> interleaved, const VoltageLimits& limits, TrialArray& target,
                std::int64_t first);

} // namespace tavex2
