#pragma once

#include <optional>
#include <string_view>

namespace tavex2 {

/// The factor by which an axis's label scale expression multiplies the values at its ticks: 1 for an empty text, the
/// number for "*" followed by one ("*1000"). No value for any other text.
std::optional<double> labelScaleFactor(std::string_view expression);

} // namespace tavex2
