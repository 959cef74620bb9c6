#include "base/DecimalText.h"

#include "base/Decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace tavex2 {

namespace {

constexpr std::array<double, 7> powersOfTen{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

/// Where products are exact to the last bit together with their rounding error, and whole parts fit a double.
constexpr double largestProduct = 4e15;

/// value x scale to the nearest whole number, ties up. `value` is not negative and the product at most largestProduct.
std::uint64_t nearestWhole(double value, double scale) {
    const double product = value * scale;
    const double error = std::fma(value, scale, -product); // product + error is the exact product
    const double whole = std::floor(product);
    const double beyondHalf = (product - whole) - 0.5; // exact
    return static_cast<std::uint64_t>(whole) + (beyondHalf >= -error ? 1 : 0);
}

} // namespace

char* writeDecimal(char* to, double value, int decimals) {
    const double size = std::abs(value);
    const double scale = powersOfTen[static_cast<std::size_t>(decimals)];
    if (!(size * scale < largestProduct)) {
        const std::string text = fixedDecimal(value, decimals);
        return std::copy(text.begin(), text.end(), to);
    }
    const std::uint64_t whole = nearestWhole(size, scale);
    if (std::signbit(value) && whole != 0) *to++ = '-';
    const auto unit = static_cast<std::uint64_t>(scale);
    to = std::to_chars(to, to + 20, whole / unit).ptr;
    if (decimals == 0) return to;
    *to = '.';
    std::uint64_t rest = whole % unit;
    for (char* digit = to + decimals; digit > to; --digit) {
        *digit = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    return to + decimals + 1;
}

char* writeDecimalAligned(char* to, double value, int decimals, std::size_t width) {
    char* const end = writeDecimal(to, value, decimals);
    const auto length = static_cast<std::size_t>(end - to);
    if (length >= width) return end;
    std::memmove(to + (width - length), to, length);
    std::fill_n(to, width - length, ' ');
    return to + width;
}

} // namespace tavex2
