#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace tavex2 {

/// How a number of a table looks.
struct DecimalFormat {
    int decimals = 0;      ///< digits behind the point, 0..6
    std::size_t width = 0; ///< up to 16: right-aligned in so many characters, longer texts stand in full; 0: as it is
};

/// The room that writeDecimal() needs for any number. It may write all over it, not only where the text ends up.
inline constexpr std::size_t decimalTextRoom = 352;

/// Writes a number at `to`, without a terminator, and gives the place behind the last character. The digits are those
/// of fixedDecimal(): exact, ties away from zero, no minus sign on zero; only much faster, for tables of millions of
/// numbers.
char* writeDecimal(char* to, double value, const DecimalFormat& format);

/// The same for a row of numbers, each followed by `separator`, and with room for each and its separator.
char* writeDecimals(char* to, std::span<const double> values, const DecimalFormat& format, std::string_view separator);

} // namespace tavex2
