#include "base/DecimalText.h"

#include "base/Decimal.h"
#include "base/LittleEndian.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace tavex2 {

namespace {

/// Numbers whose digits, those behind the point included, are at most so many are written in one go.
constexpr int shortDigits = 8;
constexpr double largestShort = 99'999'999;

constexpr std::size_t widestColumn = 16;

constexpr std::array<double, 7> powersOfTen{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

/// How many units of its last digit a number comes to, its sign left out.
struct UnitCount {
    double product;  ///< before it was rounded to a whole number
    double rounded;  ///< the nearest whole number plus `rounder`
    double distance; ///< of the product from that whole number, exact

    /// Adding it leaves a whole number below 2^51 in the lowest bits of a double.
    static constexpr double rounder = 0x1.8p52;

    UnitCount(double value, double scale)
        : product(std::abs(value) * scale), rounded(product + rounder), distance(product - (rounded - rounder)) {}

    std::uint64_t count() const {
        return std::bit_cast<std::uint64_t>(rounded) - std::bit_cast<std::uint64_t>(rounder);
    }

    /// Whether the whole number is right for a product up to `largest`, ties left out: the product's own rounding moves
    /// it by less than `largest` / 2^52. False for what is no number.
    bool certain(double largest) const { return product <= largest && std::abs(distance) <= 0.5 - largest * 0x1p-52; }
};

/// The eight decimal digits of a number up to largestShort, the first one in the lowest byte, each 0..9. The number is
/// halved three times, all parts side by side in one word: into fours, twos and single digits; the factors divide by
/// 100 and 10 in the ranges that occur.
std::uint64_t eightDigits(std::uint32_t number) {
    const std::uint64_t high = number / 10'000;
    const std::uint64_t fours = high | ((number - high * 10'000) << 32);
    const std::uint64_t hundreds = ((fours * 10'486) >> 20) & 0x0000'007F'0000'007F;
    const std::uint64_t twos = hundreds | ((fours - hundreds * 100) << 16);
    const std::uint64_t tens = ((twos * 103) >> 10) & 0x000F'000F'000F'000F;
    return tens | ((twos - tens * 10) << 8);
}

/// Writes the bytes of a word, the lowest first.
void store(char* to, std::uint64_t word) {
    const auto bytes = littleEndianBytes(word);
    std::memcpy(to, bytes.data(), bytes.size());
}

/// A number that counts units of its last digit.
template <int decimals>
char* writeShort(char* to, bool negative, std::uint32_t count, std::size_t width) {
    constexpr std::uint64_t zeros = 0x3030'3030'3030'3030;
    constexpr std::uint64_t blanks = 0x2020'2020'2020'2020;
    constexpr int mostWholeDigits = shortDigits - decimals;
    const std::uint64_t digits = eightDigits(count);
    // The mark keeps one digit before the point.
    constexpr std::uint64_t mark = std::uint64_t{1} << (8 * (mostWholeDigits - 1));
    const int leadingZeros = std::countr_zero(digits | mark) / 8;
    const int wholeDigits = mostWholeDigits - leadingZeros;

    if (width > 0) {
        const std::size_t length = static_cast<std::size_t>(wholeDigits) + 1 + decimals + (negative ? 1U : 0U);
        store(to, blanks);
        store(to + 8, blanks);
        to += width > length ? width - length : 0;
    }
    *to = '-';
    to += negative ? 1 : 0;
    const std::uint64_t text = digits | zeros;
    store(to, text >> (8 * leadingZeros));
    to += wholeDigits;
    *to = '.';
    store(to + 1, text >> (8 * mostWholeDigits));
    return to + 1 + decimals;
}

/// Any number. A call of its own, so that the short ones need not make room for what it works with.
[[gnu::noinline]] char* writeLong(char* to, double value, int decimals, std::size_t width) {
    constexpr double largest = 0x1p40; // above it, few numbers would be certain
    const double scale = powersOfTen[static_cast<std::size_t>(decimals)];
    const UnitCount units(value, scale);
    std::array<char, decimalTextRoom> text;
    char* end = text.data();
    if (units.certain(largest)) {
        const std::uint64_t count = units.count();
        const auto unit = static_cast<std::uint64_t>(scale);
        if (std::signbit(value) && count != 0) *end++ = '-';
        end = std::to_chars(end, end + 20, count / unit).ptr;
        if (decimals > 0) {
            // The one in front keeps the zeros behind it.
            char* const point = end;
            end = std::to_chars(point, point + 20, unit + count % unit).ptr;
            *point = '.';
        }
    } else {
        const std::string exact = fixedDecimal(value, decimals);
        end = std::copy(exact.begin(), exact.end(), end);
    }
    const auto length = static_cast<std::size_t>(end - text.data());
    to = std::fill_n(to, width > length ? width - length : 0, ' ');
    return std::copy(text.data(), end, to);
}

template <int decimals>
char* write(char* to, double value, std::size_t width) {
    static_assert(decimalTextRoom > widestColumn + shortDigits + 2 * sizeof(std::uint64_t));
    const UnitCount units(value, powersOfTen[decimals]);
    if (!units.certain(largestShort)) [[unlikely]]
        return writeLong(to, value, decimals, width);
    const auto count = static_cast<std::uint32_t>(units.count());
    return writeShort<decimals>(to, std::signbit(value) & (count != 0), count, width);
}

template <int decimals>
char* writeRow(char* to, std::span<const double> values, std::size_t width, std::string_view separator) {
    for (const double value : values) {
        to = write<decimals>(to, value, width);
        to = std::copy(separator.begin(), separator.end(), to);
    }
    return to;
}

} // namespace

char* writeDecimals(char* to, std::span<const double> values, const DecimalFormat& format, std::string_view separator) {
    switch (format.decimals) {
    case 4:
        return writeRow<4>(to, values, format.width, separator);
    case 5:
        return writeRow<5>(to, values, format.width, separator);
    case 6:
        return writeRow<6>(to, values, format.width, separator);
    default: // no table has them
        for (const double value : values) {
            to = writeLong(to, value, format.decimals, format.width);
            to = std::copy(separator.begin(), separator.end(), to);
        }
        return to;
    }
}

char* writeDecimal(char* to, double value, const DecimalFormat& format) {
    return writeDecimals(to, std::span(&value, 1), format, {});
}

} // namespace tavex2
