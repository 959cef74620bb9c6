#include "base/TypedNumber.h"

#include "base/Decimal.h"
#include "base/PlainText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

namespace tavex2 {

namespace {

struct Unit {
    std::string_view name;
    std::string_view quantity;
    int powerOfTen; ///< of the quantity's own unit
};

constexpr std::array<Unit, 6> units{{{"s", "time", 0},
                                     {"ms", "time", -3},
                                     {"V", "voltage", 0},
                                     {"mV", "voltage", -3},
                                     {"Hz", "frequency", 0},
                                     {"kHz", "frequency", 3}}};

/// The unit of a box and all that can be converted into it, the box's own first.
std::vector<Unit> unitsFor(const std::string& own) {
    if (own.empty()) return {};
    const auto known = std::ranges::find(units, own, &Unit::name);
    if (known == units.end()) return {{own, own, 0}};
    std::vector<Unit> taken{*known};
    for (const Unit& each : units)
        if (each.quantity == known->quantity && each.name != own) taken.push_back(each);
    return taken;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// A text taken apart.
struct Parts {
    std::string number; ///< with a point before the decimals
    std::string unit;
};

/// No value for what does not begin with a number, or goes on with something that can be no unit.
std::optional<Parts> takeApart(std::string_view text) {
    std::string plain(text);
    std::ranges::replace(plain, ',', '.');
    const char* const end = plain.data() + plain.size();
    const char* from = plain.data() + (plain.starts_with('+') ? 1 : 0);
    const char* const first = from + (from != end && *from == '-' && from == plain.data() ? 1 : 0);
    if (first == end || (!isDigit(*first) && *first != '.')) return std::nullopt; // "nan" and "inf" are no numbers here
    double ignored = 0;
    const auto [stopped, error] = std::from_chars(from, end, ignored);
    if (error == std::errc::invalid_argument) return std::nullopt;
    const std::string_view rest = withoutBlanks(std::string_view(stopped, static_cast<std::size_t>(end - stopped)));
    const bool startedExponent = lowerCase(rest) == "e" || lowerCase(rest) == "e-";
    if (!rest.empty() && (isDigit(rest.front()) || startedExponent ||
                          std::string_view(".+-").find(rest.front()) != std::string_view::npos))
        return std::nullopt;
    return Parts{{from, stopped}, std::string(rest)};
}

/// The value of a number text, which from_chars has accepted, times a power of ten, exactly as if it had been written
/// with that exponent. No value when no double holds it.
std::optional<double> valueOf(const std::string& number, int powerOfTen) {
    const std::size_t e = std::min(number.find_first_of("eE"), number.size());
    int exponent = 0;
    if (e < number.size()) {
        const std::size_t sign = number[e + 1] == '+' ? 1 : 0;
        const auto [stopped, error] =
            std::from_chars(number.data() + e + 1 + sign, number.data() + number.size(), exponent);
        if (error != std::errc{}) return std::nullopt;
    }
    const std::string shifted = number.substr(0, e) + "e" + std::to_string(exponent + powerOfTen);
    double value = 0;
    const auto [stopped, error] = std::from_chars(shifted.data(), shifted.data() + shifted.size(), value);
    if (error != std::errc{} || !std::isfinite(value)) return std::nullopt;
    return value;
}

/// Whether a comma stands where it may separate thousands as well as decimals: "1,000", not "0,125" or "1000,125".
bool ambiguousComma(std::string_view text) {
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos) return false;
    std::string_view before = text.substr(0, comma);
    if (before.starts_with('+') || before.starts_with('-')) before.remove_prefix(1);
    std::string_view after = text.substr(comma + 1);
    const auto digits = static_cast<std::size_t>(std::ranges::find_if_not(after, isDigit) - after.begin());
    return digits == 3 && !before.empty() && before.size() <= 3 && before.front() != '0';
}

} // namespace

std::string allowedText(const NumberEntry& entry) {
    const bool bounded = std::isfinite(entry.lowest) && std::isfinite(entry.highest);
    std::string text = bounded ? plainNumber(entry.lowest) + " to " + plainNumber(entry.highest) : "any number";
    if (!entry.unit.empty()) text += (bounded ? " " : " of ") + entry.unit;
    text += entry.whole ? ", in steps of 1" : ", decimals too";
    for (const Unit& each : unitsFor(entry.unit))
        if (each.name != entry.unit) text += "; " + std::string(each.name) + " is taken too";
    return text;
}

Result<double> readTyped(std::string_view text, const NumberEntry& entry) {
    text = withoutBlanks(text);
    const auto refused = [&](const std::string& reason) {
        return Error{ErrorKind::InvalidValue, reason + " Allowed: " + allowedText(entry) + "."};
    };
    const std::string given = "\"" + std::string(text) + "\"";
    if (text.empty()) return refused("The number is missing.");
    const std::optional<Parts> parts = takeApart(text);
    if (!parts) return refused(given + " is no number.");

    const std::vector<Unit> taken = unitsFor(entry.unit);
    int powerOfTen = 0;
    if (!parts->unit.empty()) {
        const auto unit = std::ranges::find_if(
            taken, [&](const Unit& each) { return lowerCase(each.name) == lowerCase(parts->unit); });
        if (unit == taken.end()) return refused(given + " has a unit that this box does not take.");
        powerOfTen = unit->powerOfTen - taken.front().powerOfTen;
    }
    if (ambiguousComma(text))
        return refused(given +
                       " can be read in two ways: write a point before decimals, and nothing between thousands.");
    const std::optional<double> value = valueOf(parts->number, powerOfTen);
    if (!value) return refused(given + " cannot be kept as a number.");
    if (entry.whole && *value != std::floor(*value)) return refused(given + " is no whole number.");
    if (*value < entry.lowest) return refused(given + " is too small.");
    if (*value > entry.highest) return refused(given + " is too large.");
    return *value;
}

} // namespace tavex2
