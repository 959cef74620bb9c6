#pragma once

#include <cmath>
#include <cstdint>

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

} // namespace tavex2
