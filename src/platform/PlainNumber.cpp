#include "platform/PlainNumber.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tavex2 {

std::string plainNumber(double value) {
    if (!std::isfinite(value)) return "not a finite number";
    std::array<char, 1100> text; // the longest double takes some 1080 digits
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed).ptr;
    return {text.data(), end};
}

} // namespace tavex2
