#include "base/TypedNumber.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <charconv>
#include <optional>

namespace tavex2 {
namespace {

const NumberEntry rate{.unit = "Hz", .lowest = 1, .highest = 100000, .whole = true};
const NumberEntry seconds{.unit = "s", .lowest = 0.01, .highest = 3600};
const NumberEntry anyMilliseconds{.unit = "ms"};
const NumberEntry level{.unit = "V", .lowest = -9.8, .highest = 9.8};
const NumberEntry percent{.unit = "%", .lowest = 0, .highest = 95, .whole = true};
const NumberEntry plainNumberEntry{.unit = {}, .lowest = 0, .highest = 9999, .whole = true};

std::optional<double> read(std::string_view text, const NumberEntry& entry) {
    const Result<double> result = readTyped(text, entry);
    return result ? std::optional(result.value()) : std::nullopt;
}

std::string refusal(std::string_view text, const NumberEntry& entry) {
    const Result<double> result = readTyped(text, entry);
    return result ? "read as " + std::to_string(result.value()) : result.error().text;
}

TEST(TypedNumber, ReadsNumbersWithAndWithoutTheirUnit) {
    EXPECT_EQ(read("0.5", seconds), 0.5);
    EXPECT_EQ(read(" 0.5 s ", seconds), 0.5);
    EXPECT_EQ(read("0.5s", seconds), 0.5);
    EXPECT_EQ(read("-1e3 ms", anyMilliseconds), -1000);
    EXPECT_EQ(read("1e3", rate), 1000);
    EXPECT_EQ(read("+2,75", level), 2.75);
    EXPECT_EQ(read(".5", level), 0.5);
    EXPECT_EQ(read("10 %", percent), 10);
    EXPECT_EQ(read("12", plainNumberEntry), 12);
}

TEST(TypedNumber, ConvertsUnitsOfTheSameQuantityExactly) {
    EXPECT_EQ(read("2500 ms", seconds), 2.5);
    EXPECT_EQ(read("2.5 s", anyMilliseconds), 2500);
    EXPECT_EQ(read("1.001 kHz", rate), 1001) << "a product in binary would be no whole number";
    EXPECT_EQ(read("1.5e1 KHZ", rate), 15000);
    EXPECT_EQ(read("250mV", level), 0.25);
    EXPECT_EQ(read("1e+3 mV", level), 1);
}

TEST(TypedNumber, NeverMakesAnotherNumberOfAText) {
    EXPECT_EQ(refusal("12.7", rate),
              "\"12.7\" is no whole number. Allowed: 1 to 100000 Hz, in steps of 1; kHz is taken too.");
    EXPECT_EQ(
        refusal("1.5 s", rate),
        "\"1.5 s\" has a unit that this box does not take. Allowed: 1 to 100000 Hz, in steps of 1; kHz is taken too.");
    EXPECT_EQ(refusal("500000", rate),
              "\"500000\" is too large. Allowed: 1 to 100000 Hz, in steps of 1; kHz is taken too.");
    EXPECT_EQ(refusal("98.0 V", level),
              "\"98.0 V\" is too large. Allowed: -9.8 to 9.8 V, decimals too; mV is taken too.");
    EXPECT_EQ(refusal("0.001 s", seconds),
              "\"0.001 s\" is too small. Allowed: 0.01 to 3600 s, decimals too; ms is taken too.");
    EXPECT_EQ(refusal("1e400", anyMilliseconds),
              "\"1e400\" cannot be kept as a number. Allowed: any number of ms, decimals too; s is taken too.");
    EXPECT_EQ(refusal("", percent), "The number is missing. Allowed: 0 to 95 %, in steps of 1.");
    EXPECT_EQ(refusal("5 s", plainNumberEntry),
              "\"5 s\" has a unit that this box does not take. Allowed: 0 to 9999, in steps of 1.");
}

TEST(TypedNumber, RefusesWhatIsNoNumber) {
    for (const char* text : {" ", "s", "1 2", "abc", "-", "+-5", "--5", "1e", "1e-", "nan", "inf", "-inf", "0x10",
                             "1.2.3", "1 000", "1e99999999999", "."})
        EXPECT_FALSE(read(text, anyMilliseconds)) << text;
}

TEST(TypedNumber, TakesACommaForAPointUnlessItMaySeparateThousands) {
    EXPECT_EQ(read("2,5", seconds), 2.5);
    EXPECT_EQ(read("0,125", seconds), 0.125);
    EXPECT_EQ(read("1000,125", seconds), 1000.125);
    EXPECT_EQ(read("1,2345 s", seconds), 1.2345);
    EXPECT_EQ(read("1.000", rate), 1) << "a point is never anything else";
    EXPECT_EQ(
        refusal("1,000", rate),
        "\"1,000\" can be read in two ways: write a point before decimals, and nothing between thousands. Allowed: "
        "1 to 100000 Hz, in steps of 1; kHz is taken too.");
    EXPECT_FALSE(read("-12,500 ms", anyMilliseconds));
    EXPECT_FALSE(read("1,000.5", seconds));
    EXPECT_FALSE(read("1,000,000", rate));
}

RC_GTEST_PROP(TypedNumberProperty, AnyTextIsReadWholeOrRefusedInWords, ()) {
    const auto text = *rc::gen::container<std::string>(rc::gen::elementOf(std::string("0123456789+-.,eE smVHzk%x")));
    const Result<double> result = readTyped(text, anyMilliseconds);
    if (result)
        RC_ASSERT(text.find_first_of("0123456789") != std::string::npos);
    else
        RC_ASSERT(result.error().text.find("Allowed: ") != std::string::npos);
}

RC_GTEST_PROP(TypedNumberProperty, EveryNumberReadsAsItself, ()) {
    const auto value = *rc::gen::arbitrary<double>();
    std::array<char, 64> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    RC_ASSERT(read({text.data(), end}, anyMilliseconds) == std::optional(value));
}

} // namespace
} // namespace tavex2
