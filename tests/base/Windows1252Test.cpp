#include "base/Windows1252.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tavex2::test {
namespace {

TEST(Windows1252Test, LeavesAsciiAlone) {
    const std::string ascii("Force 1 [N]\t\0x", 14);
    EXPECT_EQ(windows1252FromUtf8(ascii), ascii);
    EXPECT_EQ(utf8FromWindows1252(ascii), ascii);
    EXPECT_EQ(windows1252FromUtf8(""), "");
}

TEST(Windows1252Test, ConvertsLettersAndSignsBothWays) {
    const std::string utf8 = "\xC2\xB5V \xC2\xB0 \xC3\xBC \xE2\x82\xAC \xE2\x80\x93 \xC5\xB8"; // µV ° ü € – Ÿ
    const std::string bytes = "\xB5V \xB0 \xFC \x80 \x96 \x9F";
    EXPECT_EQ(windows1252FromUtf8(utf8), bytes);
    EXPECT_EQ(utf8FromWindows1252(bytes), utf8);
}

TEST(Windows1252Test, WritesAQuestionMarkForACharacterItLacks) {
    EXPECT_EQ(windows1252FromUtf8("a\xCE\xA9z"), "a?z");       // Ω
    EXPECT_EQ(windows1252FromUtf8("\xF0\x9F\x99\x82!"), "?!"); // beyond 16 bits
    EXPECT_EQ(windows1252FromUtf8("\xC2\x80"), "?");           // a control whose byte is a letter here
    EXPECT_EQ(windows1252FromUtf8("\xC4\x80\xEF\xBF\xBD"), "??");
}

TEST(Windows1252Test, WritesAQuestionMarkForAnIllFormedPiece) {
    EXPECT_EQ(windows1252FromUtf8("a\xFFz"), "a?z");
    EXPECT_EQ(windows1252FromUtf8("\xB5V"), "?V");   // a continuation without its start
    EXPECT_EQ(windows1252FromUtf8("\xC3z"), "?z");   // a start without its continuation
    EXPECT_EQ(windows1252FromUtf8("\xE2\x82"), "?"); // cut short
    EXPECT_EQ(windows1252FromUtf8("\xE2\x82z"), "?z");
    EXPECT_EQ(windows1252FromUtf8("\xE0\x81\x81"), "?"); // longer than needed
    EXPECT_EQ(windows1252FromUtf8("\xF0\x80\x81\x81"), "?");
    EXPECT_EQ(windows1252FromUtf8("\xED\xA0\x80"), "?");     // half a pair
    EXPECT_EQ(windows1252FromUtf8("\xF4\x90\x80\x80"), "?"); // beyond the last character
    EXPECT_EQ(windows1252FromUtf8("\xF8z\xC1z"), "?z?z");
}

TEST(Windows1252Test, BringsEveryByteBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(windows1252FromUtf8(utf8FromWindows1252(all)), all);
}

RC_GTEST_PROP(Windows1252Test, TakesAnyBytesAndNeverGrows, (const std::string& text)) {
    const std::string bytes = windows1252FromUtf8(text);
    RC_ASSERT(bytes.size() <= text.size());
    RC_ASSERT(windows1252FromUtf8(utf8FromWindows1252(bytes)) == bytes);
}

} // namespace
} // namespace tavex2::test
