#pragma once

#include <string>

namespace tavex2 {

/// The number at a tick of an axis whose ticks lie `step` apart, with as many digits as telling neighbours apart needs:
/// 45.6788 at a step of 0.00002 -> "45.67880". Numbers that would get long that way are written with an exponent where
/// that is shorter. `step` is above 0.
std::string tickText(double value, double step);

} // namespace tavex2
