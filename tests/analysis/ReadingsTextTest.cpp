#include "analysis/ReadingsText.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavex2 {
namespace {

TEST(ReadingsTextTest, WritesTimesVoltsAndTheIntegral) {
    const ReadingTexts texts = textsOf(1.5, 0.25, Readings{.Minimum = -1.23456, .Maximum = 2, .Integral = 0.00000125});
    EXPECT_EQ(texts.cursor1, "1.5000");
    EXPECT_EQ(texts.cursor2, "0.2500");
    EXPECT_EQ(texts.interval, "1.2500") << "positive where the cursors are crossed";
    EXPECT_EQ(texts.minimum, "-1.2346");
    EXPECT_EQ(texts.maximum, "2.0000");
    EXPECT_EQ(texts.peakToPeak, "3.2346");
    EXPECT_EQ(texts.integral, "0.0000013");
}

TEST(ReadingsTextTest, WithoutReadingsOnlyTheTimesAreThere) {
    const ReadingTexts texts = textsOf(0, 1, {});
    EXPECT_EQ(texts.interval, "1.0000");
    EXPECT_EQ(texts.integral + texts.minimum + texts.maximum + texts.peakToPeak, "");
}

TEST(ReadingsTextTest, MakesATableForSpreadsheets) {
    const ReadingTexts texts = textsOf(0, 0.5, Readings{.Minimum = 1, .Maximum = 2, .Integral = 3});
    EXPECT_EQ(readingsTable({{"Trial0001", "EMG", "mV", texts}, {"T2", "EMG", "mV", textsOf(0, 1, {})}}),
              "Trial\tChannel\tUnit\tCursor 1 (s)\tCursor 2 (s)\tInterval (s)\tMinimum (V)\tMaximum (V)\t"
              "Peak-to-Peak (V)\tIntegral (V s)\n"
              "Trial0001\tEMG\tmV\t0.0000\t0.5000\t0.5000\t1.0000\t2.0000\t1.0000\t3.0000000\n"
              "T2\tEMG\tmV\t0.0000\t1.0000\t1.0000\t\t\t\t\n");
}

TEST(ReadingsTextTest, AReadingThatDoesNotExistIsNoNumber) {
    const double none = std::nan("");
    const ReadingTexts texts = textsOf(0, 1, Readings{.Minimum = none, .Maximum = none, .Integral = none});
    for (const std::string& text : {texts.minimum, texts.maximum, texts.peakToPeak, texts.integral, voltText(none)})
        EXPECT_EQ(text, "no number");
    EXPECT_EQ(texts.interval, "1.0000");
    EXPECT_EQ(voltText(-1.23456), "-1.2346");
}

} // namespace
} // namespace tavex2
