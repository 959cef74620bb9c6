#include "base/FileNames.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tavex2::test {
namespace {

TEST(ExtensionOfTest, IgnoresCapitals) {
    EXPECT_EQ(extensionOf("folder.x/Trial.LMB"), ".lmb");
    EXPECT_EQ(extensionOf("Trial.Plv"), ".plv");
    EXPECT_EQ(extensionOf("Trial"), "");
    EXPECT_EQ(extensionOf("folder.lmb/Trial"), "");
}

TEST(WithExtensionTest, GivesATypedNameWhatItLacks) {
    EXPECT_EQ(withExtension("Pilot", ".lmb"), "Pilot.lmb");
    EXPECT_EQ(withExtension("Pilot1.5", ".lmb"), "Pilot1.5.lmb");
    EXPECT_EQ(withExtension("/data/Proto.col.v2", ".set"), "/data/Proto.col.v2.set");
    EXPECT_EQ(withExtension("Pilot.", ".lmb"), "Pilot.lmb");
}

TEST(WithExtensionTest, LeavesAKnownExtension) {
    EXPECT_EQ(withExtension("Pilot.lmb", ".lmb"), "Pilot.lmb");
    EXPECT_EQ(withExtension("Pilot.LMB", ".lmb"), "Pilot.LMB");
    EXPECT_EQ(withExtension("Pilot.tab", ".lmb"), "Pilot.tab");
}

TEST(WholePathTest, StartsAtTheRoot) {
    EXPECT_EQ(wholePath("a.lmb"), std::filesystem::current_path() / "a.lmb");
    const TemporaryFolder folder;
    EXPECT_EQ(wholePath(folder / "a.lmb"), folder / "a.lmb");
}

} // namespace
} // namespace tavex2::test
