#include "files/SaveCommands.h"

#include "files/Import.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"
#include "support/Trials.h"

#include <gmock/gmock.h>

#include <limits>
#include <tuple>

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
        m_state.paths.DataDir = (m_folder / "data").string();
        m_state.paths.LastFile = "/before.lmb";
        fs::create_directory(m_folder / "data");
        collect(m_state, trialOf({{1, 2, 3}, {4, 5, 6}}));
        m_view.whileRefreshing = [this] {
            m_works.push_back(m_state.fileWork);
            m_notices.push_back(m_state.notice);
        };
    }

    void answer(const fs::path& path) { m_dialogs.answers.emplace_back(path); }

    /// The state of a trial that is as unsaved as it was.
    void expectUntouched() {
        EXPECT_EQ(m_state.TrialName(), "Trial0001");
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
    std::vector<std::string> m_works;   ///< the work on a file that each refresh showed
    std::vector<std::string> m_notices; ///< what each refresh told
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
        m_state.changeCurrent([](Trial& trial) { trial.Unsaved = trial.TrialNotSaved = true; });
        const fs::path path = m_folder / (as ? "Second.lmb" : "First.lmb");
        answer(path);
        EXPECT_TRUE(as ? m_commands.mnuSaveAs_Click() : m_commands.mnuSave_Click());
        EXPECT_EQ(m_state.TrialName(), as ? "Second" : "First");
        EXPECT_EQ(m_state.trials.CurrentTrial->savedName, as ? "Second.lmb" : "First.lmb");
        EXPECT_EQ(m_state.trials.CurrentTrial->file, path.string());
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
    EXPECT_THAT(m_view.log, ElementsAre("refresh", "pending", "pending", "pending", "refresh", "redraw", "refresh"));
    EXPECT_THAT(m_works, ElementsAre("Saving a.lmb ...", "", ""));
    EXPECT_THAT(m_notices, ElementsAre("", "", "Saved as " + (m_folder / "a.lmb").string()));
}

TEST_F(SaveCommandsTest, ANameWithoutExtensionGetsOne) {
    answer(m_folder / "plain");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_TRUE(fs::exists(m_folder / "plain.lmb"));
    EXPECT_EQ(m_state.TrialName(), "plain");
    EXPECT_EQ(m_state.paths.LastFile, (m_folder / "plain.lmb").string());

    answer(m_folder / "dot.");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_EQ(m_state.TrialName(), "dot");
    EXPECT_TRUE(fs::exists(m_folder / "dot.lmb"));
}

TEST_F(SaveCommandsTest, TheTrialIsNamedAsItsFileWithoutTheExtension) {
    for (const auto& [typed, file, name] : {std::tuple{"A.LMB", "A.LMB", "A"},
                                            {"b.tab", "b.tab", "b"},
                                            {"d.x.lmb", "d.x.lmb", "d.x"},
                                            {"Pilot1.5", "Pilot1.5.lmb", "Pilot1.5"},
                                            {"c.dat", "c.dat.lmb", "c.dat"}}) {
        answer(m_folder / typed);
        ASSERT_TRUE(m_commands.mnuSave_Click());
        EXPECT_TRUE(readLmbFile(m_folder / file)) << file;
        EXPECT_EQ(m_state.TrialName(), name);
        EXPECT_EQ(m_state.trials.CurrentTrial->savedName, std::string(name) + ".lmb");
        EXPECT_EQ(m_state.paths.LastFile, (m_folder / file).string());
    }
    EXPECT_FALSE(fs::exists(m_folder / "Pilot1.5"));
    EXPECT_FALSE(fs::exists(m_folder / "Pilot1.lmb"));
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
    EXPECT_EQ(m_state.TrialName(), "a");

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
        EXPECT_THAT(m_view.log, ElementsAre("refresh", "refresh"));
        EXPECT_THAT(m_works, ElementsAre("Saving a.lmb ...", ""));
        EXPECT_THAT(m_notices, testing::Each(""));
        m_messages.shown.clear();
        m_view.log.clear();
        m_works.clear();
    }
}

TEST_F(SaveCommandsTest, WithoutATrialNothingHappens) {
    m_state.changeCurrent([](Trial& trial) { trial.samples.reset(); }); // what a collection without hardware leaves
    for (const bool unasked : {false, true}) {
        m_state.autosaveWithoutAsking = unasked;
        EXPECT_FALSE(m_commands.mnuSave_Click());
        EXPECT_FALSE(m_commands.mnuSaveAs_Click());
        EXPECT_FALSE(m_commands.autosave());
    }
    EXPECT_THAT(m_dialogs.asked, IsEmpty());
    EXPECT_THAT(m_messages.shown, IsEmpty());
    EXPECT_THAT(m_view.log, testing::AllOf(testing::SizeIs(6), testing::Each("refresh")));
    EXPECT_THAT(m_notices, testing::Each("There is no trial to save."));
    expectUntouched();

    m_state.trials.CurrentTrial.reset(); // before the first collection
    EXPECT_FALSE(m_commands.mnuSave_Click());
    EXPECT_FALSE(m_commands.autosave());
    EXPECT_THAT(m_dialogs.asked, IsEmpty());
    EXPECT_THAT(m_notices, testing::AllOf(testing::SizeIs(8), testing::Each("There is no trial to save.")));
}

TEST_F(SaveCommandsTest, TheHeaderThatWasWrittenIsTheTrialsAndThatOfTheNextOnes) {
    m_state.header.Labels[2].assign("Force");
    collect(m_state, trialOf({{1, 2, 3}, {4, 5, 6}}));
    answer(m_folder / "a.lmb");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_EQ(m_state.header, readLmbFile(m_folder / "a.lmb").value().header);
    EXPECT_EQ(m_state.trials.CurrentTrial->header, m_state.header);
    EXPECT_EQ(m_state.header.Labels[0].trimmed(), "Time");
    EXPECT_EQ(m_state.header.Labels[1].trimmed(), "Channel 00");
    EXPECT_EQ(m_state.header.Labels[2].trimmed(), "Force");
    EXPECT_TRUE(m_state.header.Labels[3].neverSet());
}

TEST_F(SaveCommandsTest, ATrialThatIsAlsoTheLastOneIsSavedAsBoth) {
    m_state.trials.LastTrial = m_state.trials.CurrentTrial; // as after a collection that was stopped before its trial
    answer(m_folder / "a.lmb");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_EQ(m_state.trials.LastTrial, m_state.trials.CurrentTrial);
    EXPECT_EQ(m_state.trials.LastTrial->name, "a");
    EXPECT_FALSE(m_state.trials.LastTrial->TrialNotSaved);
    EXPECT_TRUE(m_state.trials.LastTrial->AddedToAverage);
}

TEST_F(SaveCommandsTest, AnotherLastTrialStaysAsUnsavedAsItWas) {
    m_state.trials.LastTrial = m_state.trials.CurrentTrial;
    collect(m_state, trialOf({{3, 2, 1}, {6, 5, 4}}), 1000, "Trial0002");
    answer(m_folder / "Trial0002.lmb");
    ASSERT_TRUE(m_commands.mnuSave_Click());
    EXPECT_EQ(m_state.trials.LastTrial->name, "Trial0001");
    EXPECT_TRUE(m_state.trials.LastTrial->TrialNotSaved);
    EXPECT_FALSE(m_state.trials.LastTrial->AddedToAverage);
    EXPECT_EQ(m_state.trials.LastTrial->samples->at(0, 0), 1.0);
}

TEST_F(SaveCommandsTest, ATrialIsSavedAsItWasTakenWhateverIsSetForTheNextOne) {
    m_state.settings.setup.TrialNumber = 7;
    m_state.header.Labels[1].assign("Force");
    m_state.header.Units[1].assign("N");
    m_state.comments[0].assign("left leg");
    collect(m_state, trialOf({{1, 2, 3}, {4, 5, 6}}), 500, "Trial0007");

    m_state.settings.setup.TrialNumber = 8;
    m_state.settings.setup.FilePrefix = "Subject";
    m_state.settings.sampling.Rate = 20000;
    m_state.settings.sampling.Duration = 60.0F;
    m_state.header.Labels[1].assign("Torque");
    m_state.header.Units[1].assign("Nm");
    m_state.comments[0].assign("right leg");
    m_state.autosaveWithoutAsking = true;
    ASSERT_TRUE(m_commands.autosave());

    const auto read = readLmbFile(m_folder / "data" / "Trial0007.lmb");
    ASSERT_TRUE(read) << read.error().text;
    const LmbFile& file = read.value();
    EXPECT_EQ(file.header.Title.trimmed(), "Tavex2 analog data file.  Trial 0007  2024-03-05 14.07.09");
    EXPECT_EQ(file.header.Rate, 500.0);
    EXPECT_EQ(file.header.Duration, static_cast<double>(2.0F / 500.0F));
    EXPECT_EQ(file.header.Labels[1].trimmed(), "Force");
    EXPECT_EQ(file.header.Units[1].trimmed(), "N");
    EXPECT_EQ(file.comments[0].trimmed(), "left leg");
    EXPECT_EQ(m_state.TrialName(), "Trial0007");
    EXPECT_EQ(m_state.trials.CurrentTrial->number, 7);
    EXPECT_EQ(m_state.comments[0].trimmed(), "right leg") << "the next trial's";
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
    EXPECT_EQ(m_state.TrialName(), "Trial0001");
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_FALSE(m_state.TrialNotSaved());
    EXPECT_EQ(m_view.log.back(), "refresh");
    EXPECT_THAT(m_works, ElementsAre("Saving Trial0001.lmb ...", "", ""));
    EXPECT_EQ(m_notices.back(), "Saved as " + path.string());
}

TEST_F(SaveCommandsTest, UnaskedAutosaveNeverReplacesAFile) {
    m_state.autosaveWithoutAsking = true;
    const fs::path old = m_folder.path() / "data" / "Trial0001.lmb";
    std::ofstream(old) << "old";
    EXPECT_TRUE(m_commands.autosave());
    EXPECT_EQ(bytesOf(old), "old");
    EXPECT_EQ(m_state.TrialName(), "Trial0001 (2)");
    EXPECT_EQ(m_state.trials.CurrentTrial->savedName, "Trial0001 (2).lmb");

    m_state.rename("Trial0001");
    EXPECT_TRUE(m_commands.autosave());
    EXPECT_EQ(m_state.TrialName(), "Trial0001 (3)");
    EXPECT_THAT(m_notices.back(), HasSubstr("Trial0001 (3).lmb"));
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
