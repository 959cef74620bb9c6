#include "display/TickText.h"

#include "base/Decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tavex2 {

namespace {

constexpr std::size_t usualLength = 8;

/// The decimal place of a step's last digit: 2.5 -> -1, 20 -> 1. Steps have two digits at most.
int lastPlace(double step) {
    const int first = static_cast<int>(std::floor(std::log10(step) + 1e-9));
    const double digits = step / std::pow(10.0, first);
    return std::abs(digits - std::round(digits)) < 1e-6 ? first : first - 1;
}

std::string withExponent(double value, int place) {
    const int first = static_cast<int>(std::floor(std::log10(std::abs(value))));
    std::array<char, 64> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific,
                                   std::clamp(first - place, 0, 17))
                         .ptr;
    return {text.data(), end};
}

} // namespace

std::string tickText(double value, double step) {
    const int place = lastPlace(step);
    const bool zero = std::abs(value) < step / 2;
    const std::string plain = fixedDecimal(zero ? 0 : value, std::clamp(-place, 0, 100));
    if (plain.size() <= usualLength) return plain;
    if (zero) return "0";
    const std::string powered = withExponent(value, place);
    return powered.size() < plain.size() ? powered : plain;
}

} // namespace tavex2
