#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavex2 {

/// The lowest and highest of some samples, in the samples' unit. Starts empty; NaN is not a sample.
struct Extent {
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -std::numeric_limits<double>::infinity();

    bool empty() const { return lowest > highest; }

    /// False for an empty one too.
    bool finite() const { return std::isfinite(lowest) && std::isfinite(highest); }

    bool contains(const Extent& other) const { return other.lowest >= lowest && other.highest <= highest; }

    /// Takes one more sample in; NaN changes nothing.
    void add(double sample) {
        lowest = sample < lowest ? sample : lowest;
        highest = sample > highest ? sample : highest;
    }

    void add(const Extent& other) {
        lowest = std::min(lowest, other.lowest);
        highest = std::max(highest, other.highest);
    }

    friend bool operator==(const Extent&, const Extent&) = default;
};

} // namespace tavex2
