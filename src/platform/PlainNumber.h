#pragma once

#include <string>

namespace tavex2 {

/// The shortest decimal text that reads back as `value`, without an exponent: 100000 -> "100000", 0.1 -> "0.1".
/// For rates and voltages in messages.
std::string plainNumber(double value);

} // namespace tavex2
