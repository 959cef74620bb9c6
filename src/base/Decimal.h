#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tavex2 {

// Numbers as text, whatever the user's language: a point before the decimals, no separator of thousands. Tables of
// millions of numbers have the fast twin of fixedDecimal() in DecimalText.h, boxes that a person types into the display
// formats of NumberFormat.h, and rightAligned() and leftAligned() in PlainText.h fill columns.

/// A whole number with at least `digits` digits, filled with leading zeros: 7 -> "0007", 12345 -> "12345", -7 ->
/// "-0007" (the sign does not count as a digit).
std::string zeroPadded(std::int64_t value, std::size_t digits);

/// A number with `decimals` (0..100) digits behind the point and none without a digit in front of it. Rounds the exact
/// binary value, ties away from zero: 0.5 -> "1", -2.5 -> "-3", 0.125 to two -> "0.13"; no minus sign on zero. NaN and
/// infinity give "nan", "inf" and "-inf".
std::string fixedDecimal(double value, int decimals);

/// A number with at most `digits` (1..17) digits that count, without zeros at its end, with an exponent where it is
/// very large or very small: 500 -> "500", 0.1 -> "0.1", 1e20 -> "1e+20". NaN and infinity as above.
std::string generalDecimal(double value, int digits);

/// The shortest text that reads back as `value`, without an exponent: 100000 -> "100000", 0.1 -> "0.1". What is not
/// finite gives "not a finite number".
std::string plainNumber(double value);

/// The number whose shortest text is that of `value`: 0.05F, which is 0.0500000007 as a double, gives 0.05.
double shortestDouble(float value);

} // namespace tavex2
