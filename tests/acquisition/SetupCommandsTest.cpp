#include "acquisition/SetupCommands.h"

#include "acquisition/SetupFile.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavex2::test {
namespace {

class FakeOptionsView final : public OptionsView {
  public:
    std::optional<bool> maximized;
    int dialogs = 0;
    int followed = 0;
    int refreshed = 0;
    std::function<void()> whenDialogOpens;
    std::function<void()> whileRefreshing;

    void refresh() override {
        ++refreshed;
        if (whileRefreshing) whileRefreshing();
    }
    void setMaximized(bool on) override { maximized = on; }
    void mnuProperties_Click() override {
        ++dialogs;
        if (whenDialogOpens) whenDialogOpens();
    }
    void followDisplaySettings() override { ++followed; }
};

class SetupCommandsTest : public testing::Test {
  protected:
    SetupCommandsTest() { state.rename("Trial0003"); }

    std::filesystem::path write(const std::string& name, const std::string& bytes) {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return folder / name;
    }

    TemporaryFolder folder;
    ProgramState state;
    FakeDialogs dialogs;
    FakeMessages messages;
    FakeAnalogInput input;
    FakeOptionsView view;
    SetupCommands commands{state, input, dialogs, messages, view};
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
    EXPECT_EQ(state.TrialName(), "Protocol");
    EXPECT_EQ(state.paths.LastSetupFile, (folder / "Protocol.set").string());
    EXPECT_EQ(view.refreshed, 1);
}

TEST_F(SetupCommandsTest, WithoutAnyNameSetupIsProposed) {
    state.rename("");
    commands.SaveSetup();
    commands.LoadSetup();
    ASSERT_EQ(dialogs.asked.size(), 2U);
    EXPECT_EQ(dialogs.asked[0].initialName, "Setup.set");
    EXPECT_EQ(dialogs.asked[1].initialName, "Setup.set");
}

TEST_F(SetupCommandsTest, ANameTypedWithoutAnExtensionGetsOne) {
    for (const std::string typed : {"plain", "Proto.col.v2"}) {
        dialogs.answers = {folder / typed};
        commands.SaveSetup();
        EXPECT_EQ(bytesOf(folder / (typed + ".set")), encodeSetup(state.settings));
        EXPECT_FALSE(std::filesystem::exists(folder / typed));
        EXPECT_EQ(state.TrialName(), typed);
        EXPECT_EQ(state.paths.LastSetupFile, (folder / (typed + ".set")).string());
    }
}

TEST_F(SetupCommandsTest, AnExtensionThatIsAddedReplacesNoFileUnasked) {
    write("Proto.v2.set", "old");
    dialogs.answers = {folder / "Proto.v2", folder / "Proto.v2"};
    messages.answers = {MessageAnswer::No, MessageAnswer::Yes};
    commands.SaveSetup();
    EXPECT_EQ(bytesOf(folder / "Proto.v2.set"), "old");
    EXPECT_EQ(state.TrialName(), "Trial0003");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text, testing::HasSubstr("Proto.v2.set already exists"));
    commands.SaveSetup();
    EXPECT_EQ(bytesOf(folder / "Proto.v2.set"), encodeSetup(state.settings));
}

TEST_F(SetupCommandsTest, ASetupFileNamesTheCurrentTrial) {
    state.trials.CurrentTrial = std::make_shared<const Trial>();
    dialogs.answers = {folder / "Protocol.set"};
    commands.SaveSetup();
    EXPECT_EQ(state.trials.CurrentTrial->name, "Protocol");
}

TEST_F(SetupCommandsTest, ACancelledOrFailedSaveChangesNothing) {
    commands.SaveSetup();
    EXPECT_TRUE(messages.shown.empty());
    dialogs.answers = {folder / "missing" / "a.set"};
    commands.SaveSetup();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text, testing::StartsWith("Error saving "));
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(state.TrialName(), "Trial0003");
    EXPECT_EQ(state.paths.LastSetupFile, "");
    EXPECT_EQ(view.refreshed, 0);
}

// Loading -------------------------------------------------------------------------------------------------------------

TEST_F(SetupCommandsTest, LoadingReplacesEverySettingAndOpensTheSetupDialog) {
    AcqSettings stored;
    stored.sampling.Rate = 4321;
    stored.setup.Device = 3;
    stored.setup.DisplayInVolts = false;
    stored.sound.SoundAvailable = true;
    dialogs.answers = {write("Protocol.set", encodeSetup(stored))};
    view.whenDialogOpens = [this] { EXPECT_EQ(input.device(), 3) << "the dialog shows the file's device"; };
    commands.LoadSetup();
    EXPECT_EQ(state.settings, stored);
    EXPECT_EQ(state.TrialName(), "Protocol");
    EXPECT_EQ(state.paths.LastSetupFile, (folder / "Protocol.set").string());
    EXPECT_EQ(view.dialogs, 1);
    EXPECT_EQ(view.followed, 1);
    EXPECT_GE(view.refreshed, 1);
    EXPECT_TRUE(messages.shown.empty());
    ASSERT_EQ(dialogs.asked.size(), 1U);
    EXPECT_EQ(dialogs.asked[0].title, "Open Tavex2 setup properties (.SET) file");
    EXPECT_EQ(dialogs.asked[0].defaultExtension, "set");
    EXPECT_EQ(dialogs.asked[0].filter, "Tavex2 setup file (.set)|*.set|All Files (*.*)|*.*|");
    EXPECT_EQ(dialogs.asked[0].initialName, "Trial0003.set");
}

TEST_F(SetupCommandsTest, ACancelledLoadChangesNothing) {
    const AcqSettings before = state.settings;
    commands.LoadSetup();
    EXPECT_EQ(state.settings, before);
    EXPECT_EQ(state.TrialName(), "Trial0003");
    EXPECT_EQ(view.dialogs, 0);
}

TEST_F(SetupCommandsTest, AnotherVersionIsRefusedAfterItsFirstBlockWasTakenOver) {
    AcqSettings stored;
    stored.setup.StartDelay = 17;
    stored.sampling.Rate = 4321;
    std::string newer = encodeSetup(stored);
    newer[0] = 2;
    dialogs.answers = {write("Newer.set", newer)};
    commands.LoadSetup();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text,
              "The version number of the setup file is incompatible.\r\n\r\nCreate a new one and resave it.");
    EXPECT_EQ(messages.shown[0].title, "Setup File Version Invalid");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(state.settings.setup.StartDelay, 17);
    EXPECT_EQ(state.settings.sampling.Rate, 1000);
    EXPECT_EQ(view.dialogs, 0);
}

TEST_F(SetupCommandsTest, AShortFileSaysSoAndKeepsWhatWasRead) {
    AcqSettings stored;
    stored.sampling.Rate = 4321;
    stored.trigger.TriggerLevel = 5.0F;
    const std::string bytes = encodeSetup(stored);
    dialogs.answers = {write("Short.set", bytes.substr(0, 30 + 2 + 5 + 107))};
    commands.LoadSetup();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "Error reading options file.  File may not be compatible.");
    EXPECT_EQ(messages.shown[0].title, "Error Reading Options");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(state.settings.sampling.Rate, 4321);
    EXPECT_EQ(state.settings.trigger.TriggerLevel, 1.0F);
    EXPECT_EQ(view.dialogs, 0);
}

TEST_F(SetupCommandsTest, AMissingFileSaysSo) {
    commands.LoadSetupFile(folder / "Nowhere.set");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "Error Reading Options");
}

// The program's own settings ------------------------------------------------------------------------------------------

TEST_F(SetupCommandsTest, TheProgramsOwnSettingsTravelBesideTheSetupFile) {
    state.autosaveWithoutAsking = true;
    dialogs.answers = {folder / "Protocol.set"};
    commands.SaveSetup();
    EXPECT_EQ(bytesOf(folder / "Protocol.set"), encodeSetup(state.settings));
    EXPECT_EQ(bytesOf(folder / "Protocol.set.json"), "{\n  \"AutosaveWithoutAsking\": true\n}\n");

    state.autosaveWithoutAsking = false;
    std::vector<bool> shown;
    view.whileRefreshing = [&] { shown.push_back(state.autosaveWithoutAsking); };
    view.whenDialogOpens = [&] { EXPECT_TRUE(shown.back()) << "the menu shows it before the dialog opens"; };
    commands.LoadSetupFile(folder / "Protocol.set");
    EXPECT_TRUE(state.autosaveWithoutAsking);
    EXPECT_EQ(view.dialogs, 1);
    EXPECT_TRUE(messages.shown.empty());

    view.whenDialogOpens = nullptr;
    commands.LoadSetupFile(write("Plain.set", encodeSetup(AcqSettings{})));
    EXPECT_FALSE(state.autosaveWithoutAsking) << "a protocol without own settings has the defaults";
}

TEST_F(SetupCommandsTest, SavingTheDefaultsRemovesWhatAnEarlierSaveLeftBesideTheFile) {
    state.autosaveWithoutAsking = true;
    dialogs.answers = {folder / "Protocol.set", folder / "Protocol.set"};
    commands.SaveSetup();
    state.autosaveWithoutAsking = false;
    commands.SaveSetup();
    EXPECT_TRUE(std::filesystem::exists(folder / "Protocol.set"));
    EXPECT_FALSE(std::filesystem::exists(folder / "Protocol.set.json"));
}

TEST_F(SetupCommandsTest, OwnSettingsThatCannotBeSavedAreTold) {
    std::filesystem::create_directory(folder / "Protocol.set.json");
    state.autosaveWithoutAsking = true;
    dialogs.answers = {folder / "Protocol.set"};
    commands.SaveSetup();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text, testing::StartsWith("Error saving "));
    EXPECT_FALSE(std::filesystem::exists(folder / "Protocol.set"));
    EXPECT_EQ(state.TrialName(), "Trial0003");
}

TEST_F(SetupCommandsTest, DamagedOwnSettingsAreToldAndTheSetupOpensAllTheSame) {
    state.autosaveWithoutAsking = true;
    write("Protocol.set.json", "{ \"AutosaveWithoutAsking\": tr");
    commands.LoadSetupFile(write("Protocol.set", encodeSetup(AcqSettings{})));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text, testing::HasSubstr("Protocol.set.json: The file holds no JSON object"));
    EXPECT_FALSE(state.autosaveWithoutAsking);
    EXPECT_EQ(view.dialogs, 1);
}

TEST_F(SetupCommandsTest, ARefusedSetupFileChangesNoOwnSetting) {
    state.autosaveWithoutAsking = true;
    commands.LoadSetupFile(write("Short.set", "\x01"));
    EXPECT_TRUE(state.autosaveWithoutAsking);
}

// Toggles -------------------------------------------------------------------------------------------------------------

TEST_F(SetupCommandsTest, EachToggleInvertsItsFieldAndShowsIt) {
    const auto& setup = state.settings.setup;
    const std::vector<std::function<bool()>> fields{
        [&] { return static_cast<bool>(setup.Autosave); }, [&] { return state.flags.DebugMode; },
        [&] { return static_cast<bool>(setup.PauseToReset); }, [&] { return static_cast<bool>(setup.StartMaximized); },
        [&] { return static_cast<bool>(setup.SaveOffsets); }};
    for (const bool expected : {true, false}) {
        for (std::size_t index = 0; index < fields.size(); ++index) {
            std::vector<bool> shown;
            view.whileRefreshing = [&] { shown.push_back(fields[index]()); };
            commands.mnuOption_Click(static_cast<int>(index));
            EXPECT_EQ(fields[index](), expected) << index;
            EXPECT_EQ(shown, std::vector{expected}) << index;
        }
        EXPECT_EQ(view.maximized, expected) << "at once";
    }
}

TEST_F(SetupCommandsTest, ItemsFiveAndSixLoadAndSave) {
    commands.mnuOption_Click(6);
    EXPECT_EQ(dialogs.asked.back().title, "Save Tavex2 setup properties (.SET) file");
    commands.mnuOption_Click(5);
    EXPECT_EQ(dialogs.asked.back().title, "Open Tavex2 setup properties (.SET) file");
}

TEST_F(SetupCommandsTest, AfterTheDialogTheMarksAreOneOffUntilTheNextToggle) {
    SetupOptions& setup = state.settings.setup;
    setup.Autosave = true;
    setup.SaveOffsets = true;
    setup.PauseToReset = false;
    setup.StartMaximized = true;
    EXPECT_EQ(state.flags.resetMark, std::nullopt) << "the item shows its own setting";
    EXPECT_EQ(state.flags.maximizedMark, std::nullopt);
    commands.afterSetup();
    EXPECT_EQ(state.flags.resetMark, true) << "SaveOffsets";
    EXPECT_EQ(state.flags.maximizedMark, false) << "PauseToReset";
    EXPECT_EQ(view.refreshed, 1);

    for (const int other : {0, 1, 4}) {
        commands.mnuOption_Click(other);
        EXPECT_EQ(state.flags.resetMark, true) << other;
        EXPECT_EQ(state.flags.maximizedMark, false) << other;
    }
    commands.mnuOption_Click(2);
    EXPECT_TRUE(setup.PauseToReset);
    EXPECT_EQ(state.flags.resetMark, std::nullopt);
    EXPECT_EQ(state.flags.maximizedMark, false) << "until its own item is chosen";
    commands.mnuOption_Click(3);
    EXPECT_FALSE(setup.StartMaximized);
    EXPECT_EQ(state.flags.maximizedMark, std::nullopt);
}

} // namespace
} // namespace tavex2::test
