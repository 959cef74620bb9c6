#include "base/PathText.h"

#include <gtest/gtest.h>

namespace tavex2::test {
namespace {

TEST(PathTextTest, GivesUtf8AndTakesItBack) {
    const std::filesystem::path path = std::filesystem::path(u8"Körper") / u8"Trial0001.lmb";
    EXPECT_EQ(pathText(path.filename()), "Trial0001.lmb");
    EXPECT_EQ(pathText(path.parent_path()), "K\xC3\xB6rper");
    EXPECT_EQ(pathFromText(pathText(path)), path);
    EXPECT_TRUE(pathFromText("").empty());
}

} // namespace
} // namespace tavex2::test
