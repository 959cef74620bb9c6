#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace tavex2 {

/// Rounds to the nearest whole number, halves to the even one (0.5 -> 0, 1.5 -> 2), whatever rounding mode is set.
/// The argument must be finite and inside the 64-bit range.
inline std::int64_t roundHalfEven(double x) {
    const double below = std::floor(x);
    const double rest = x - below;
    const auto low = static_cast<std::int64_t>(below);
    if (rest > 0.5 || (rest == 0.5 && (low % 2) != 0)) return low + 1;
    return low;
}

/// Rounds to a 16-bit whole number, halves to even; what lies beyond the range becomes its nearest end. The argument is
/// not NaN.
inline std::int16_t saturatedInt16(double x) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(
        roundHalfEven(std::clamp(x, static_cast<double>(Limits::min()), static_cast<double>(Limits::max()))));
}

} // namespace tavex2
