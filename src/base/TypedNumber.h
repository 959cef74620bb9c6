#pragma once

#include "base/Result.h"

#include <limits>
#include <string>
#include <string_view>

namespace tavex2 {

/// What may be typed into a numeric box.
struct NumberEntry {
    std::string unit; ///< the unit that the box counts in, without blanks; empty for a plain number
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();
    bool whole = false; ///< no decimals
};

/// Says what may be typed: "1 to 100000 Hz, in steps of 1; kHz is taken too", "any number of V, decimals too; mV is
/// taken too".
std::string allowedText(const NumberEntry& entry);

/// Reads a number as a person types it: with a point or a comma before the decimals, with or without an exponent, with
/// or without a unit, in capital or small letters. A unit of the same quantity is converted: 2500 ms is 2.5 in a box
/// that counts in seconds. A comma before exactly three digits is refused where it may as well separate thousands.
///
/// The text is the number or it is refused: no part of it is ever left out. The InvalidValue error says what is wrong
/// with it and what is allowed.
Result<double> readTyped(std::string_view text, const NumberEntry& entry);

} // namespace tavex2
