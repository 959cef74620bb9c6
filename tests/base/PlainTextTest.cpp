#include "base/PlainText.h"

#include <gtest/gtest.h>

namespace tavex2::test {
namespace {

TEST(AlignedTest, FillsUpToTheWidthAndNeverCuts) {
    EXPECT_EQ(rightAligned("7", 3), "  7");
    EXPECT_EQ(leftAligned("7", 3), "7  ");
    EXPECT_EQ(rightAligned("1234", 3), "1234");
    EXPECT_EQ(leftAligned("", 2), "  ");
}

TEST(AlignedTest, CountsCharactersNotBytes) {
    EXPECT_EQ(leftAligned("\u00b5V", 4), "\u00b5V  ");
    EXPECT_EQ(rightAligned("\u20ac", 2), " \u20ac");
}

TEST(HasControlCharactersTest, FindsThemAndNoOthers) {
    for (const char* text : {"a\tb", "\n", "\x1f", "\x7f"})
        EXPECT_TRUE(hasControlCharacters(text));
    EXPECT_TRUE(hasControlCharacters(std::string_view("a\0", 2)));
    for (const char* text : {"", " a~", "M\u00fcller \u00b5V", "\xff"})
        EXPECT_FALSE(hasControlCharacters(text)) << text;
}

TEST(PrintableTest, ShowsControlCharactersByTheirNumber) {
    EXPECT_EQ(printable("a\x1b[31mb", LineBreaks::Keep), "a\\u001b[31mb");
    EXPECT_EQ(printable(std::string("\0\x7f", 2), LineBreaks::Keep), "\\u0000\\u007f");
    EXPECT_EQ(printable("\u009b2J", LineBreaks::Keep), "\\u009b2J") << "the one-byte form of a terminal's command";
}

TEST(PrintableTest, KeepsLineBreaksOnlyWhenTheyAreWanted) {
    EXPECT_EQ(printable("a\tb\n", LineBreaks::Keep), "a\tb\n");
    EXPECT_EQ(printable("a\tb\n\r", LineBreaks::Escape), "a\\u0009b\\u000a\\u000d");
}

TEST(PrintableTest, ShowsWhatTurnsTheDirectionOfWriting) {
    EXPECT_EQ(printable("x\u202eexe.lmb", LineBreaks::Keep), "x\\u202eexe.lmb");
}

TEST(PrintableTest, LeavesOtherTextAlone) {
    EXPECT_EQ(printable("M\u00fcller \u00b5V \U0001F9E0 \\u001b", LineBreaks::Escape),
              "M\u00fcller \u00b5V \U0001F9E0 \\u001b");
}

TEST(PrintableTest, MarksBytesThatAreNoText) {
    EXPECT_EQ(printable("a\x9b\xff", LineBreaks::Keep), "a\uFFFD\uFFFD");
}

} // namespace
} // namespace tavex2::test
