#include "app/Exit.h"

#include "support/Fakes.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

class ExitTest : public testing::Test {
  protected:
    bool mayExit() {
        return prepareExit(state, messages, store, [this] {
            ++saves;
            return saved;
        });
    }

    ProgramState state;
    FakeMessages messages;
    FakeSettingsStore store;
    bool saved = true;
    int saves = 0;
};

TEST_F(ExitTest, WithNothingUnsavedItStoresTheSettingsWithoutAsking) {
    state.paths = {.ProgramDir = "/p",
                   .DataDir = "/d",
                   .LastFile = "/l",
                   .RecentFiles = {"/l", "/k"},
                   .LastSetupFile = "/s",
                   .SiblingProgramDir = "/sib",
                   .ViewerProgram = "v",
                   .SpreadsheetProgram = "x",
                   .WindowsDir = "w"};
    state.settings.setup.StartMaximized = true;
    state.autosaveWithoutAsking = true;
    EXPECT_TRUE(mayExit());
    EXPECT_TRUE(messages.shown.empty());
    const std::map<std::string, std::string> expected{{"Tavex2/Startup/Progdir", "/p"},
                                                      {"Tavex2/Startup/Datadir", "/d"},
                                                      {"Tavex2/Startup/Lastfile", "/l"},
                                                      {"Tavex2/Startup/Recentfiles", "/l\n/k"},
                                                      {"Tavex2/Startup/Lastsetupfile", "/s"},
                                                      {"Tavex2/Startup/Fullscreen", "True"},
                                                      {"Tavex2/Startup/Autosavewithoutasking", "True"},
                                                      {"Orvanta/Startup/Viewer", "v"},
                                                      {"Orvanta/Startup/Spreadsheet", "x"}};
    EXPECT_EQ(store.values, expected) << "the sibling's folder is read only";
}

TEST_F(ExitTest, AsksAboutATrialThatWasNotSaved) {
    state.trials.CurrentTrial = std::make_shared<Trial>();
    messages.answers = {MessageAnswer::No};
    EXPECT_TRUE(mayExit());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "Your last trial was NOT saved.  Do you want to save it before exiting?");
    EXPECT_EQ(messages.shown[0].title, "Last Trial Saved");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Question);
    EXPECT_EQ(messages.shown[0].buttons, MessageButtons::YesNoCancel);
    EXPECT_EQ(saves, 0);
    EXPECT_FALSE(store.values.empty());
}

TEST_F(ExitTest, CancelKeepsTheProgramRunningWithNothingStored) {
    state.trials.CurrentTrial = std::make_shared<Trial>();
    messages.answers = {MessageAnswer::Cancel};
    EXPECT_FALSE(mayExit());
    EXPECT_TRUE(store.values.empty());
    EXPECT_EQ(saves, 0);
}

TEST_F(ExitTest, YesSavesAndGoesOnOnlyWhenTheTrialWasSaved) {
    state.trials.CurrentTrial = std::make_shared<Trial>();
    messages.answers = {MessageAnswer::Yes, MessageAnswer::Yes};
    saved = false; // the user cancelled the save dialog, or the disk is full
    EXPECT_FALSE(mayExit());
    EXPECT_TRUE(store.values.empty());
    saved = true;
    EXPECT_TRUE(mayExit());
    EXPECT_EQ(saves, 2);
    EXPECT_FALSE(store.values.empty());
}

TEST_F(ExitTest, SettingsThatCannotBeStoredAreToldOnceAndTheUserDecides) {
    store.full = true;
    messages.answers = {MessageAnswer::Cancel, MessageAnswer::Ok};
    EXPECT_FALSE(mayExit());
    ASSERT_EQ(messages.shown.size(), 1U) << "one message for all of them";
    EXPECT_EQ(messages.shown[0].title, "Settings Not Stored");
    EXPECT_EQ(messages.shown[0].buttons, MessageButtons::OkCancel);
    EXPECT_THAT(messages.shown[0].text, testing::HasSubstr("The store of Tavex2 is full."));
    EXPECT_TRUE(mayExit()) << "OK exits all the same";
    EXPECT_EQ(messages.shown.size(), 2U);
    store.full = false;
    EXPECT_TRUE(mayExit());
    EXPECT_EQ(messages.shown.size(), 2U);
    EXPECT_FALSE(store.values.empty());
}

} // namespace
} // namespace tavex2::test
