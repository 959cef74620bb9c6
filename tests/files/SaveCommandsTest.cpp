#include "files/SaveCommands.h"

#include "files/Import.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"
#include "support/Trials.h"

#include <gmock/gmock.h>

#include <limits>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const LocalTime someTime{2024, 3, 5, 14, 7, 9};

class SaveCommandsTest : public testing::Test {
  protected:
    SaveCommandsTest() {
        m_state.TrialName = "Trial0001";
        m_state.paths.DataDir = (m_folder / "data").string();
        m_state.paths.LastFile = "/before.lmb";
        fs::create_directory(m_folder / "data");
        collect(m_state, trialOf({{1, 2, 3}, {4, 5, 6}}));
    }

    void answer(const fs::path& path) { m_dialogs.answers.emplace_back(path); }

    /// The state of a trial that is as unsaved as it was.
    void expectUntouched() {
        EXPECT_EQ(m_state.TrialName, "Trial0001");
        EXPECT_EQ(m_state.trials.CurrentTrial->savedName, "");
        EXPECT_EQ(m_state.paths.LastFile, "/before.lmb");
        EXPECT_EQ(m_state.paths.DataDir, (m_folder / "data").string());
        EXPECT_TRUE(m_state.Unsaved());
        EXPECT_TRUE(m_state.TrialNotSaved());
        EXPECT_EQ(m_state.trials.average.AverageCount, 0);
        EXPECT_FALSE(m_state.trials.CurrentTrial->AddedToAverage);
    }

    TemporaryFolder m_folder;
    ProgramState m_state;
    FakeDialogs m_dialogs;
    FakeMessages m_messages;
    FakeFileView m_view;
    SaveCommands m_commands{m_state, m_dialogs, m_messages, m_view, [] { return someTime; }};
};

TEST_F(SaveCommandsTest, SaveOpensItsDialog) {
    EXPECT_FALSE(m_commands.mnuSave_Click());
    ASSERT_EQ(m_dialogs.asked.size(), 1U);
    const FileDialogRequest& request = m_dialogs.asked[0];
    EXPECT_EQ(request.title, "Save data in Lumidor2 binary (.LMB) file");
    EXPECT_EQ(request.defaultExtension, "lmb");
    EXPECT_EQ(request.filter, "Lumidor2 binary file (.lmb)|*.lmb|All Files (*.*)|*.*|");
    EXPECT_EQ(request.filterIndex, 0);
    EXPECT_EQ(request.folder, m_folder / "data");
    EXPECT_EQ(request.initialName, "Trial0001.lmb");
}

TEST_F(SaveCommandsTest, SaveAsDiffersInItsTitleOnly) {
    m_commands.mnuSave_Click();
    m_commands.mnuSaveAs_Click();
    ASSERT_EQ(m_dialogs.asked.size(), 2U);
    EXPECT_EQ(m_dialogs.asked[1].title, "Save as Lumidor2 binary data file");
    EXPECT_EQ(m_dialogs.asked[1].defaultExtension, m_dialogs.asked[0].defaultExtension);
    EXPECT_EQ(m_dialogs.asked[1].filter, m_dialogs.asked[0].filter);
    EXPECT_EQ(m_dialogs.asked[1].folder, m_dialogs.asked[0].folder);
    EXPECT_EQ(m_dialogs.asked[1].initialName, m_dialogs.asked[0].initialName);
}

TEST_F(SaveCommandsTest, CancelEndsBothSilently) {
    EXPECT_FALSE(m_commands.mnuSave_Click());
    EXPECT_FALSE(m_commands.mnuSaveAs_Click());
    expectUntouched();
    EXPECT_THAT(m_messages.shown, IsEmpty());
    EXPECT_THAT(m_view.log, IsEmpty());
}

TEST_F(SaveCommandsTest, SavingTakesTheNameAndFolderOfTheFile) {
    for (const bool as : {false, true}) {
        m_state.Unsaved() = m_state.changeCurrent([](Trial& trial) { trial.TrialNotSaved = true; });
        const fs::path path = m_folder / (as ? "Second.lmb" : "First.lmb");
        answer(path);
        EXPECT_TRUE(as ? m_commands.mnuSaveAs_Click() : m_commands.mnuSave_Click());
        EXPECT_EQ(m_state.TrialName, as ? "Second" : "First");
        EXPECT_EQ(m_state.trials.CurrentTrial->savedName, as ? "Second.lmb" : "First.lmb");
        EXPECT_EQ(m_state.paths.LastFile, path.string());
        EXPECT_EQ(m_state.paths.DataDir, m_folder.path().string());
        EXPECT_FALSE(m_state.Unsaved());
        EXPECT_FALSE(m_state.TrialNotSaved());
        EXPECT_TRUE(m_state.DataPresent());
        EXPECT_EQ(readLmbFile(path).value().samples.at(1, 2), 6.0);
    }
    EXPECT_THAT(m_messages.shown, IsEmpty());
}

TEST_F(SaveCommandsTest, TheWindowIsBusyWhileWritingAndUpToDateAfterwards) {
    answer(m_folder / "a.lmb");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_THAT(m_view.log,
                ElementsAre("hourglass", "pending", "pending", "pending", "pointer", "redraw", "menus", "caption"));
}

TEST_F(SaveCommandsTest, ANameWithoutExtensionGetsOne) {
    answer(m_folder / "plain");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_TRUE(fs::exists(m_folder / "plain.lmb"));
    EXPECT_EQ(m_state.TrialName, "plain");
    EXPECT_EQ(m_state.paths.LastFile, (m_folder / "plain.lmb").string());

    answer(m_folder / "dot.");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_EQ(m_state.TrialName, "dot");
    EXPECT_TRUE(fs::exists(m_folder / "dot.lmb"));
}

TEST_F(SaveCommandsTest, TheTrialIsNamedWithoutAnyExtension) {
    for (const auto& [file, name] : {std::pair{"A.LMB", "A"}, {"b.dat", "b"}, {"c.trial", "c"}, {"d.x.lmb", "d.x"}}) {
        answer(m_folder / file);
        ASSERT_TRUE(m_commands.mnuSave_Click());
        EXPECT_TRUE(fs::exists(m_folder / file));
        EXPECT_EQ(m_state.TrialName, name);
        EXPECT_EQ(m_state.trials.CurrentTrial->savedName, std::string(name) + ".lmb");
    }
}

TEST_F(SaveCommandsTest, AnExtensionThatIsAddedReplacesNoFileUnasked) {
    std::ofstream(m_folder / "plain.lmb") << "old";
    answer(m_folder / "plain");
    m_messages.answers = {MessageAnswer::No};
    EXPECT_FALSE(m_commands.mnuSave_Click());
    EXPECT_EQ(bytesOf(m_folder / "plain.lmb"), "old");
    expectUntouched();
    ASSERT_EQ(m_messages.shown.size(), 1U);
    EXPECT_THAT(m_messages.shown[0].text, HasSubstr("plain.lmb already exists"));
    EXPECT_EQ(m_messages.shown[0].buttons, MessageButtons::YesNo);

    answer(m_folder / "plain");
    m_messages.answers = {MessageAnswer::Yes};
    EXPECT_TRUE(m_commands.mnuSave_Click());
    EXPECT_TRUE(readLmbFile(m_folder / "plain.lmb"));
}

TEST_F(SaveCommandsTest, TheDialogHasAskedBeforeReplacingTheNameItGives) {
    std::ofstream(m_folder / "a.lmb") << "old";
    answer(m_folder / "a.lmb");
    EXPECT_TRUE(m_commands.mnuSave_Click());
    EXPECT_THAT(m_messages.shown, IsEmpty());
    EXPECT_TRUE(readLmbFile(m_folder / "a.lmb"));
}

TEST_F(SaveCommandsTest, SaveWithoutAPathHandsOverToSaveAs) {
    answer("");
    answer(m_folder / "a.lmb");
    EXPECT_TRUE(m_commands.mnuSave_Click());
    ASSERT_EQ(m_dialogs.asked.size(), 2U);
    EXPECT_EQ(m_dialogs.asked[1].title, "Save as Lumidor2 binary data file");
    EXPECT_EQ(m_state.TrialName, "a");

    answer("");
    EXPECT_FALSE(m_commands.mnuSaveAs_Click());
    EXPECT_EQ(m_dialogs.asked.size(), 3U);
}

TEST_F(SaveCommandsTest, AFailureIsToldWithItsReasonAndChangesNothing) {
    const fs::path path = m_folder.path() / "none" / "a.lmb";
    for (const bool as : {false, true}) {
        answer(path);
        EXPECT_FALSE(as ? m_commands.mnuSaveAs_Click() : m_commands.mnuSave_Click());
        expectUntouched();
        ASSERT_EQ(m_messages.shown.size(), 1U);
        const Message& message = m_messages.shown[0];
        EXPECT_THAT(message.text, testing::StartsWith("Error saving " + path.string() + "\n"));
        EXPECT_THAT(message.text, HasSubstr("does not exist"));
        EXPECT_EQ(message.title, "Error");
        EXPECT_EQ(message.icon, MessageIcon::Exclamation);
        EXPECT_EQ(message.buttons, MessageButtons::Ok);
        EXPECT_THAT(m_view.log, ElementsAre("hourglass", "pointer"));
        m_messages.shown.clear();
        m_view.log.clear();
    }
}

TEST_F(SaveCommandsTest, WithoutATrialNothingHappens) {
    m_state.trials.CurrentTrial.reset(); // what a collection without hardware leaves
    for (const bool unasked : {false, true}) {
        m_state.autosaveWithoutAsking = unasked;
        EXPECT_FALSE(m_commands.mnuSave_Click());
        EXPECT_FALSE(m_commands.mnuSaveAs_Click());
        EXPECT_FALSE(m_commands.autosave());
    }
    EXPECT_THAT(m_dialogs.asked, IsEmpty());
    EXPECT_THAT(m_messages.shown, IsEmpty());
    EXPECT_THAT(m_view.log, testing::AllOf(testing::SizeIs(6), testing::Each("status There is no trial to save.")));
    expectUntouched();
}

TEST_F(SaveCommandsTest, ATrialEntersTheAverageOnceHoweverOftenItIsSaved) {
    answer(m_folder / "a.lmb");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_TRUE(m_state.trials.CurrentTrial->AddedToAverage);
    m_view.log.clear();
    answer(m_folder / "a.lmb");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    answer(m_folder / "b.lmb");
    ASSERT_TRUE(m_commands.mnuSaveAs_Click());
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_EQ(m_state.trials.average.AverageSum->at(1, 2), 6.0);
    EXPECT_THAT(m_view.log, testing::Not(testing::Contains("redraw")));
}

TEST_F(SaveCommandsTest, CompatibleTrialsAddUpAndAnotherRateStartsAgain) {
    answer(m_folder / "a.lmb");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    collect(m_state, trialOf({{3, 2, 1}, {6, 5, 4}}));
    answer(m_folder / "b.lmb");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_EQ(m_state.trials.average.AverageCount, 2);
    EXPECT_EQ(m_state.trials.average.AverageSum->at(0, 0), 4.0);

    collect(m_state, trialOf({{7, 7, 7}, {8, 8, 8}}), 500);
    m_state.settings.sampling.Rate = 1000; // changed again after the trial: its own settings count
    answer(m_folder / "c.lmb");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_EQ(m_state.trials.average.AverageSum->at(0, 0), 7.0);
    EXPECT_EQ(m_state.trials.average.AverageSettings.Rate, 500);
}

TEST_F(SaveCommandsTest, AFullAverageIsToldAfterTheTrialIsSaved) {
    answer(m_folder / "a.lmb");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    m_state.trials.average.AverageCount = std::numeric_limits<std::int16_t>::max();
    collect(m_state, trialOf({{1, 1, 1}, {1, 1, 1}}));
    answer(m_folder / "b.lmb");
    EXPECT_TRUE(m_commands.mnuSave_Click());
    EXPECT_TRUE(fs::exists(m_folder / "b.lmb"));
    EXPECT_FALSE(m_state.TrialNotSaved());
    EXPECT_FALSE(m_state.trials.CurrentTrial->AddedToAverage);
    EXPECT_EQ(m_state.trials.average.AverageCount, std::numeric_limits<std::int16_t>::max());
    ASSERT_EQ(m_messages.shown.size(), 1U);
    EXPECT_THAT(m_messages.shown[0].text, HasSubstr("32767"));
}

TEST_F(SaveCommandsTest, AutosaveRunsTheSaveCommand) {
    EXPECT_FALSE(m_commands.autosave());
    ASSERT_EQ(m_dialogs.asked.size(), 1U);
    EXPECT_EQ(m_dialogs.asked[0].title, "Save data in Lumidor2 binary (.LMB) file");
}

TEST_F(SaveCommandsTest, UnaskedAutosaveTakesTheTrialsNameInTheDataDirectory) {
    m_state.autosaveWithoutAsking = true;
    EXPECT_TRUE(m_commands.autosave());
    EXPECT_THAT(m_dialogs.asked, IsEmpty());
    const fs::path path = m_folder.path() / "data" / "Trial0001.lmb";
    EXPECT_TRUE(fs::exists(path));
    EXPECT_EQ(m_state.paths.LastFile, path.string());
    EXPECT_EQ(m_state.paths.DataDir, (m_folder / "data").string());
    EXPECT_EQ(m_state.TrialName, "Trial0001");
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_FALSE(m_state.TrialNotSaved());
    EXPECT_EQ(m_view.log.back(), "status Saved as " + path.string()) << "after the menus, which write a text too";
}

TEST_F(SaveCommandsTest, UnaskedAutosaveNeverReplacesAFile) {
    m_state.autosaveWithoutAsking = true;
    const fs::path old = m_folder.path() / "data" / "Trial0001.lmb";
    std::ofstream(old) << "old";
    EXPECT_TRUE(m_commands.autosave());
    EXPECT_EQ(bytesOf(old), "old");
    EXPECT_EQ(m_state.TrialName, "Trial0001 (2)");
    EXPECT_EQ(m_state.trials.CurrentTrial->savedName, "Trial0001 (2).lmb");

    m_state.TrialName = "Trial0001";
    EXPECT_TRUE(m_commands.autosave());
    EXPECT_EQ(m_state.TrialName, "Trial0001 (3)");
    EXPECT_THAT(m_view.log.back(), HasSubstr("Trial0001 (3).lmb"));
}

TEST_F(SaveCommandsTest, UnaskedAutosaveDoublesNoSeparator) {
    m_state.autosaveWithoutAsking = true;
    m_state.paths.DataDir += "/";
    EXPECT_TRUE(m_commands.autosave());
    EXPECT_EQ(m_state.paths.LastFile, (m_folder / "data").string() + "/Trial0001.lmb");
    EXPECT_EQ(m_state.paths.DataDir, (m_folder / "data").string());
}

TEST_F(SaveCommandsTest, AFailedUnaskedAutosaveIsToldAndChangesNothing) {
    m_state.autosaveWithoutAsking = true;
    fs::remove(m_folder / "data");
    EXPECT_FALSE(m_commands.autosave());
    expectUntouched();
    ASSERT_EQ(m_messages.shown.size(), 1U);
    const fs::path file = m_folder.path() / "data" / "Trial0001.lmb";
    EXPECT_THAT(m_messages.shown[0].text, testing::StartsWith("Error saving " + file.string() + "\n"));
    EXPECT_EQ(m_messages.shown[0].title, "Error");
}

} // namespace
} // namespace tavex2::test
