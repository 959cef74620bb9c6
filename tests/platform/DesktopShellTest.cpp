#include "platform/qt/DesktopShell.h"

#include "support/TemporaryFolder.h"
#include "support/WindowTesting.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tavex2::test {
namespace {

TEST(DesktopShellTest, StartsAProgramWithItsParametersInItsFolder) {
    const TemporaryFolder folder;
    const auto script = folder / "record it";
    std::ofstream(script) << "#!/bin/sh\nprintf '%s|%s' \"$PWD\" \"$1\" >answer.part\nmv answer.part answer\n";
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    DesktopShell shell;
    ASSERT_TRUE(shell.execute(
        {.file = script.string(), .parameters = "\"/d/my trials/a.tab\"", .folder = folder.path().string()}));
    ASSERT_TRUE(waitFor([&] { return std::filesystem::exists(folder / "answer"); }));
    EXPECT_EQ(bytesOf(folder / "answer"), folder.path().string() + "|/d/my trials/a.tab");
}

} // namespace
} // namespace tavex2::test
