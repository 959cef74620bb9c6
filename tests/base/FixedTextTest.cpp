#include "base/FixedText.h"

#include <gtest/gtest.h>

namespace tavex2::test {
namespace {

template <std::size_t N>
std::string all(const FixedText<N>& text) {
    return {text.bytes().begin(), text.bytes().end()};
}

TEST(FixedTextTest, IsFilledWithNulsUntilItIsSet) {
    const FixedText<3> text;
    EXPECT_TRUE(text.neverSet());
    EXPECT_EQ(all(text), std::string(3, '\0'));
    EXPECT_EQ(text.trimmed(), "");
}

TEST(FixedTextTest, PadsShorterTextWithBlanks) {
    EXPECT_EQ(all(FixedText<5>("ab")), "ab   ");
    EXPECT_EQ(all(FixedText<5>("abcde")), "abcde");
}

TEST(FixedTextTest, CutsLongerText) {
    EXPECT_EQ(all(FixedText<10>("A label too long")), "A label to");
}

TEST(FixedTextTest, IsSetAfterTakingEmptyText) {
    const FixedText<3> blank("");
    EXPECT_FALSE(blank.neverSet());
    EXPECT_EQ(all(blank), "   ");
    EXPECT_EQ(blank.trimmed(), "");
}

TEST(FixedTextTest, ForgetsTheOldTextWhenItTakesAShorterOne) {
    FixedText<5> text("abcde");
    text.assign("x");
    EXPECT_EQ(all(text), "x    ");
}

TEST(FixedTextTest, TrimsBlanksAtBothEndsAndStopsAtANul) {
    EXPECT_EQ(FixedText<8>("  a b ").trimmed(), "a b");
    EXPECT_EQ(FixedText<8>(std::string_view("ab\0cd", 5)).trimmed(), "ab");
    EXPECT_EQ(FixedText<3>(" a ").trimmed(), "a");
    EXPECT_EQ(FixedText<8>("  a b ").text(), "  a b") << "blanks in front are part of it";
    EXPECT_EQ(FixedText<8>(std::string_view(" ab\0cd", 6)).text(), " ab");
    EXPECT_EQ(FixedText<3>("   ").text(), "");
}

TEST(FixedTextTest, ComparesEveryByte) {
    EXPECT_EQ(FixedText<4>("ab"), FixedText<4>("ab  "));
    EXPECT_NE(FixedText<4>(""), FixedText<4>());
}

} // namespace
} // namespace tavex2::test
