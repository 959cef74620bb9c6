#include "display/LabelScale.h"

#include <charconv>
#include <cmath>

namespace tavex2 {

std::optional<double> labelScaleFactor(std::string_view expression) {
    if (expression.empty()) return 1.0;
    if (expression.front() != '*') return std::nullopt;
    const std::string_view number = expression.substr(1);
    double factor = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), factor);
    if (error != std::errc() || end != number.data() + number.size()) return std::nullopt;
    if (!std::isfinite(factor) || factor <= 0) return std::nullopt;
    return factor;
}

} // namespace tavex2
