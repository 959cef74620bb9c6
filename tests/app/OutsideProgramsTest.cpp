#include "app/OutsidePrograms.h"

#include "support/Fakes.h"

#include <gtest/gtest.h>

namespace tavex2::test {
namespace {

class OutsideProgramsTest : public testing::Test {
  protected:
    ProgramState state;
    FakeMessages messages;
    FakeShell shell;
    OutsidePrograms programs{state, messages, shell};
};

TEST_F(OutsideProgramsTest, TheLastTableGoesToTheSpreadsheet) {
    state.paths.SpreadsheetProgram = "QPW.exe";
    state.LastTabExport = "/d/my trials/a.tab";
    programs.mnuDigital_Click();
    ASSERT_EQ(shell.started.size(), 1U);
    EXPECT_EQ(shell.started[0].file, "QPW.exe");
    EXPECT_EQ(shell.started[0].parameters, "\"/d/my trials/a.tab\"");
    EXPECT_EQ(shell.started[0].folder, "");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(OutsideProgramsTest, WithoutATableTheUserIsAskedToExportFirst) {
    programs.mnuDigital_Click();
    EXPECT_TRUE(shell.started.empty());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "You must Export your current data first to a tab-delimited file.");
    EXPECT_EQ(messages.shown[0].title, "Save Data First");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Information);
}

} // namespace
} // namespace tavex2::test
