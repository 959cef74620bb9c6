#include "acquisition/SetupCommands.h"

#include "acquisition/SetupFile.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

class SetupCommandsTest : public testing::Test {
  protected:
    SetupCommandsTest() { state.TrialName = "Trial0003"; }

    TemporaryFolder folder;
    ProgramState state;
    FakeDialogs dialogs;
    FakeMessages messages;
    int captions = 0;
    SetupCommands commands{state, dialogs, messages, [this] { ++captions; }};
};

TEST_F(SetupCommandsTest, SavingAsksWithTheTrialsNameAndThenWithTheLastSetupFile) {
    dialogs.answers = {folder / "Protocol.set"};
    commands.SaveSetup();
    commands.SaveSetup(); // cancelled
    ASSERT_EQ(dialogs.asked.size(), 2U);
    EXPECT_EQ(dialogs.asked[0].title, "Save Tavex2 setup properties (.SET) file");
    EXPECT_EQ(dialogs.asked[0].defaultExtension, "set");
    EXPECT_EQ(dialogs.asked[0].filter, "Tavex2 setup file (.set)|*.set|All Files (*.*)|*.*|");
    EXPECT_EQ(dialogs.asked[0].filterIndex, 0);
    EXPECT_EQ(dialogs.asked[0].initialName, "Trial0003.set");
    EXPECT_EQ(dialogs.asked[1].initialName, (folder / "Protocol.set").string());
}

TEST_F(SetupCommandsTest, SavingWritesEverySettingAndNamesTheTrialAfterTheFile) {
    state.settings.sampling.Rate = 12345;
    dialogs.answers = {folder / "Protocol.set"};
    commands.SaveSetup();
    EXPECT_EQ(bytesOf(folder / "Protocol.set"), encodeSetup(state.settings));
    EXPECT_EQ(state.TrialName, "Protocol");
    EXPECT_EQ(state.paths.LastSetupFile, (folder / "Protocol.set").string());
    EXPECT_EQ(captions, 1);
}

TEST_F(SetupCommandsTest, ANameTypedWithoutAnExtensionGetsOne) {
    dialogs.answers = {folder / "plain"};
    commands.SaveSetup();
    EXPECT_FALSE(bytesOf(folder / "plain.set").empty());
}

TEST_F(SetupCommandsTest, ACancelledOrFailedSaveChangesNothing) {
    commands.SaveSetup();
    EXPECT_TRUE(messages.shown.empty());
    dialogs.answers = {folder / "missing" / "a.set"};
    commands.SaveSetup();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text, testing::StartsWith("Error saving "));
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(state.TrialName, "Trial0003");
    EXPECT_EQ(state.paths.LastSetupFile, "");
    EXPECT_EQ(captions, 0);
}

} // namespace
} // namespace tavex2::test
