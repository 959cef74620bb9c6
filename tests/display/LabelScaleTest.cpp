#include "display/LabelScale.h"

#include <gtest/gtest.h>

namespace tavex2 {
namespace {

TEST(LabelScale, LeavesValuesAsTheyAreForAnEmptyTextAndTimesOne) {
    EXPECT_EQ(labelScaleFactor(""), 1.0);
    EXPECT_EQ(labelScaleFactor("*1"), 1.0);
}

TEST(LabelScale, MultipliesByTheNumberAfterTheAsterisk) {
    EXPECT_EQ(labelScaleFactor("*1000"), 1000.0);
    EXPECT_EQ(labelScaleFactor("*0.5"), 0.5);
}

TEST(LabelScale, RefusesAnythingElse) {
    for (const char* text : {"1000", "*", "*x", "*1000x", "+1", "*-1", "*0", "*inf", "*nan", " *1", "*1e999"})
        EXPECT_FALSE(labelScaleFactor(text).has_value()) << text;
}

} // namespace
} // namespace tavex2
