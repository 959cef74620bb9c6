#pragma once

#include <string>
#include <string_view>

namespace tavex2 {

/// A number as a display format asks for: `0` is a digit that is always there, `#` one that is there when it counts,
/// the point separates the decimals, and text in double quotes (with the blanks before it) stands as it is: 0.5 under
/// `#.000 "V"` gives ".500 V", 12.5 under `0 "ms"` "13 ms". Ties round away from zero; a point without decimals behind
/// it is left out.
std::string formatNumber(double value, std::string_view format);

/// The unit of a display format, with the blanks before it.
std::string unitOf(std::string_view format);

} // namespace tavex2
