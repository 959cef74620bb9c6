#include "base/Decimal.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tavex2 {

namespace {

/// Adds one to the last digit of a plain decimal text.
void countUp(std::string& text) {
    for (std::size_t i = text.size(); i-- > 0;) {
        if (text[i] == '.') continue;
        if (text[i] != '9') {
            ++text[i];
            return;
        }
        text[i] = '0';
    }
    text.insert(0, 1, '1');
}

} // namespace

std::string zeroPadded(std::int64_t value, std::size_t digits) {
    std::string text = std::to_string(value);
    const std::size_t sign = value < 0 ? 1 : 0;
    if (text.size() - sign < digits) text.insert(sign, digits - (text.size() - sign), '0');
    return text;
}

std::string fixedDecimal(double value, int decimals) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    // A tie ends with its 5; a double that is no tie differs from one within these many digits.
    constexpr int digitsThatTell = 30;
    std::array<char, 512> buffer; // 309 digits before the point, 130 behind it
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value),
                                   std::chars_format::fixed, decimals + digitsThatTell)
                         .ptr;
    std::string text(buffer.data(), end);
    const bool up = text[text.size() - digitsThatTell] >= '5';
    text.resize(text.size() - digitsThatTell);
    if (text.back() == '.') text.pop_back();
    if (up) countUp(text);
    const bool zero = text.find_first_not_of("0.") == std::string::npos;
    return value < 0 && !zero ? "-" + text : text;
}

std::string generalDecimal(double value, int digits) {
    if (!std::isfinite(value)) return fixedDecimal(value, 0);
    std::array<char, 32> text;
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, digits).ptr;
    return {text.data(), end};
}

std::string plainNumber(double value) {
    if (!std::isfinite(value)) return "not a finite number";
    std::array<char, 1100> text; // the longest double takes some 1080 digits
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed).ptr;
    return {text.data(), end};
}

double shortestDouble(float value) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    double nearest = static_cast<double>(value); // what is not finite stays as it is
    if (std::isfinite(value)) std::from_chars(text.data(), end, nearest);
    return nearest;
}

} // namespace tavex2
