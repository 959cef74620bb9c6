#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tavex2 {

/// A whole number with at least `digits` digits, filled with leading zeros: 7 -> "0007", 12345 -> "12345", -7 ->
/// "-0007" (the sign does not count as a digit).
inline std::string zeroPadded(std::int64_t value, std::size_t digits) {
    std::string text = std::to_string(value);
    const std::size_t sign = value < 0 ? 1 : 0;
    if (text.size() - sign < digits) text.insert(sign, digits - (text.size() - sign), '0');
    return text;
}

/// A number with `decimals` (0..100) digits behind the point and none without a digit in front of it. Rounds the exact
/// binary value, ties away from zero: 0.5 -> "1", -2.5 -> "-3", 0.125 to two -> "0.13"; no minus sign on zero. NaN and
/// infinity give "nan", "inf" and "-inf".
std::string fixedDecimal(double value, int decimals);

} // namespace tavex2
