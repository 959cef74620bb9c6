#include "base/DecimalText.h"

#include "base/Decimal.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace tavex2 {
namespace {

std::string text(double value, int decimals) {
    std::array<char, decimalTextRoom> buffer;
    return {buffer.data(), writeDecimal(buffer.data(), value, {.decimals = decimals})};
}

std::string aligned(double value, int decimals, std::size_t width) {
    std::array<char, decimalTextRoom> buffer;
    return {buffer.data(), writeDecimal(buffer.data(), value, {decimals, width})};
}

/// The C library's text, which rounds the exact value too, ties to the even digit.
std::string ofTheLibrary(double value, int decimals) {
    std::array<char, 400> buffer;
    std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, value);
    const std::string printed = buffer.data();
    return printed.find_first_not_of("-0.") == std::string::npos && printed.front() == '-' ? printed.substr(1)
                                                                                           : printed;
}

TEST(DecimalText, WritesWhatTheExactFormatterWrites) {
    for (const double value :
         {0.0, -0.0, 0.5, -2.5, 9.9999995, 0.125, 1e15, 4.1e15, -1e22, 1e300, -0.0000004, 123.456789})
        for (int decimals = 0; decimals <= 6; ++decimals)
            EXPECT_EQ(text(value, decimals), fixedDecimal(value, decimals)) << value << " " << decimals;
    EXPECT_EQ(text(std::numeric_limits<double>::quiet_NaN(), 4), "nan");
    EXPECT_EQ(text(-std::numeric_limits<double>::infinity(), 4), "-inf");
}

TEST(DecimalText, AlignsToTheRightAndCutsNothing) {
    EXPECT_EQ(aligned(-1.5, 4, 10), "   -1.5000");
    EXPECT_EQ(aligned(1000, 2, 8), " 1000.00");
    EXPECT_EQ(aligned(123456.789, 2, 4), "123456.79");
}

TEST(DecimalText, WritesARowWithItsSeparators) {
    std::array<char, 4 * decimalTextRoom> buffer;
    const std::array<double, 4> row{1, -0.25, 123456789.5, 1e20};
    EXPECT_EQ(std::string(buffer.data(), writeDecimals(buffer.data(), row, {.decimals = 5}, "\t")),
              "1.00000\t-0.25000\t123456789.50000\t100000000000000000000.00000\t");
    EXPECT_EQ(std::string(buffer.data(), writeDecimals(buffer.data(), row, {.decimals = 1, .width = 6}, "")),
              "   1.0  -0.3123456789.5100000000000000000000.0");
}

TEST(DecimalText, AgreesWithTheLibraryOnTenMillionRandomValues) {
    std::mt19937_64 random(20261121);
    std::uniform_real_distribution<double> volts(-10, 10);
    std::uniform_real_distribution<double> large(-1e9, 1e9);
    for (int i = 0; i < 10'000'000; ++i) {
        // Voltages as doubles and as floats, times, and any finite bit pattern of a float.
        double value = 0;
        switch (i % 4) {
        case 0:
            value = volts(random);
            break;
        case 1:
            value = static_cast<double>(static_cast<float>(volts(random)));
            break;
        case 2:
            value = large(random);
            break;
        default:
            value = static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
            if (!std::isfinite(value) || std::abs(value) > 1e12) value = 0.1;
        }
        const int decimals = 4 + i % 3;
        // No random value is a tie but those with few binary digits, which the next test goes through.
        const double scaled = value * std::pow(10.0, decimals);
        if (scaled - std::floor(scaled) == 0.5) continue;
        ASSERT_EQ(text(value, decimals), ofTheLibrary(value, decimals)) << value;
    }
}

TEST(DecimalText, RoundsEveryTieAwayFromZero) {
    // A tie at n decimals is an odd multiple of 5 / 10^(n + 1), and a double only when it is one of 2^-(n + 1).
    for (const int decimals : {2, 3, 4, 5, 6}) {
        const double step = std::ldexp(1.0, -(decimals + 1));
        int ties = 0;
        for (std::int64_t k = 1; k < 400'000; k += 2) {
            const double value = static_cast<double>(k) * step; // odd, so its last decimal digit is a 5 at n + 1
            const std::string exact = ofTheLibrary(value, decimals + 1);
            ASSERT_EQ(exact.back(), '5');
            std::string expected = ofTheLibrary(std::nextafter(value, 1e9), decimals);
            ASSERT_EQ(text(value, decimals), expected) << value;
            ASSERT_EQ(text(-value, decimals), "-" + expected) << value;
            ++ties;
        }
        EXPECT_EQ(ties, 200'000);
    }
}

} // namespace
} // namespace tavex2
