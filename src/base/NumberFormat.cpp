#include "base/NumberFormat.h"

#include "base/Decimal.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tavex2 {

namespace {

/// A display format taken apart.
struct Parts {
    std::size_t leastIntegerDigits = 0;
    std::size_t leastDecimals = 0;
    std::size_t mostDecimals = 0;
    std::string unit; ///< with the blanks before it
};

Parts takeApart(std::string_view format) {
    Parts parts;
    bool decimals = false;
    bool quoted = false;
    for (const char c : format) {
        const bool digit = !quoted && (c == '0' || c == '#');
        if (c == '"') {
            quoted = !quoted;
        } else if (!quoted && c == '.') {
            decimals = true;
        } else if (!digit) {
            parts.unit += c;
        } else if (!decimals) {
            parts.leastIntegerDigits += c == '0' ? 1 : 0;
        } else {
            ++parts.mostDecimals;
            if (c == '0') parts.leastDecimals = parts.mostDecimals;
        }
    }
    return parts;
}

} // namespace

std::string formatNumber(double value, std::string_view format) {
    const Parts parts = takeApart(format);
    std::string text = fixedDecimal(value, static_cast<int>(parts.mostDecimals));
    if (!std::isfinite(value)) return text;

    const bool negative = text.front() == '-';
    if (negative) text.erase(0, 1);
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string digits = text.substr(0, point);
    std::string decimals = point < text.size() ? text.substr(point + 1) : std::string();
    while (decimals.size() > parts.leastDecimals && decimals.back() == '0')
        decimals.pop_back();
    if (digits == "0" && parts.leastIntegerDigits == 0 && !decimals.empty()) digits.clear();
    if (digits.size() < parts.leastIntegerDigits) digits.insert(0, parts.leastIntegerDigits - digits.size(), '0');
    return (negative ? "-" : "") + digits + (decimals.empty() ? "" : "." + decimals) + parts.unit;
}

std::string unitOf(std::string_view format) {
    return takeApart(format).unit;
}

} // namespace tavex2
