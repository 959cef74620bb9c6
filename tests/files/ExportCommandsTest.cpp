#include "files/ExportCommands.h"

#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/TextExport.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"
#include "support/Trials.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ExportCommandsTest : public testing::Test {
  protected:
    ExportCommandsTest() {
        m_state.paths.DataDir = m_folder.path().string();
        collect(m_state, trialOf({{1, 2, 3}, {4, 5, 6}}));
        m_view.whileRefreshing = [this] { m_works.push_back(m_state.fileWork); };
    }

    TemporaryFolder m_folder;
    ProgramState m_state;
    FakeDialogs m_dialogs;
    FakeMessages m_messages;
    FakeFileView m_view;
    std::vector<std::string> m_works; ///< the work on a file that each refresh showed
    ExportCommands m_export{m_state, m_dialogs, m_messages, m_view};
};

TEST_F(ExportCommandsTest, TheTableForSpreadsheetsIsAskedForWrittenAndRemembered) {
    m_dialogs.answers = {m_folder / "Arm.tab"};
    m_export.mnuTab_Click();
    const FileDialogRequest& asked = m_dialogs.asked.at(0);
    EXPECT_EQ(asked.title, "Export to tab-delimited (.tab) ASCII file");
    EXPECT_EQ(asked.defaultExtension, "tab");
    EXPECT_EQ(asked.filter, "Tab-delimited Files (*.tab)|*.tab|All Files (*.*)|*.*");
    EXPECT_EQ(asked.filterIndex, 0);
    EXPECT_EQ(asked.initialName, "Trial0001.tab");
    EXPECT_THAT(bytesOf(m_folder / "Arm.tab"), HasSubstr("0.001000\t2.00000\t5.00000\t\r\n"));
    EXPECT_EQ(m_state.LastTabExport, (m_folder / "Arm.tab").string());
    EXPECT_EQ(m_state.notice, "Exported to " + (m_folder / "Arm.tab").string());
    EXPECT_THAT(m_works, ElementsAre("Exporting to Arm.tab ...", "", ""));
    EXPECT_FALSE(m_state.TrialNotSaved());
    EXPECT_TRUE(m_state.Unsaved()) << "only the question at exit is spared";
    EXPECT_EQ(m_state.TrialName(), "Trial0001");
}

TEST_F(ExportCommandsTest, TheTableForTheSiblingIsAskedForAndWritten) {
    m_dialogs.answers = {m_folder / "Arm.lma"};
    m_export.mnuLumidor_Click();
    const FileDialogRequest& asked = m_dialogs.asked.at(0);
    EXPECT_EQ(asked.title, "Save As");
    EXPECT_EQ(asked.defaultExtension, "lma");
    EXPECT_EQ(asked.filter, "All Files (*.*)|*.*|Lumidor Files (*.lma)|*.lma");
    EXPECT_EQ(asked.filterIndex, 1) << "the second entry";
    EXPECT_EQ(asked.initialName, "Trial0001.lma");
    EXPECT_TRUE(bytesOf(m_folder / "Arm.lma").starts_with("* Trial0001.lma\r\n* Trial0001.lma\r\n"));
    EXPECT_EQ(m_state.notice, "Exported to " + (m_folder / "Arm.lma").string());
    EXPECT_TRUE(m_state.TrialNotSaved());
    EXPECT_EQ(m_state.LastTabExport, "");
}

TEST_F(ExportCommandsTest, TheOverlaysGoIntoTheirOwnTable) {
    m_state.overlays.OverlayData = {collectedTrial(m_state, trialOf({{1, 2}, {3, 4}})),
                                    collectedTrial(m_state, trialOf({{5, 6}, {7, 8}}))};
    m_state.overlays.OverlayCount = 2;
    m_state.changeCurrent([](Trial& trial) {
        trial.sampling.NumChannels = 2;
        trial.sampling.NumSamples = 2;
    });
    m_state.settings.sampling = m_state.overlays.OverlaySettings = m_state.trials.CurrentTrial->sampling;
    m_dialogs.answers = {m_folder / "Mean.lma", fs::path("/proc/t.lma")};
    m_export.mnuLumidorO_Click();
    const FileDialogRequest& asked = m_dialogs.asked.at(0);
    EXPECT_EQ(asked.title, "Save As");
    EXPECT_EQ(asked.defaultExtension, "lma");
    EXPECT_EQ(asked.filter, "Lumidor Files (*.lma)|*.lma|All Files (*.*)|*.*");
    EXPECT_EQ(asked.filterIndex, 0) << "the first entry";
    EXPECT_EQ(asked.initialName, "Trial0001.lma");
    EXPECT_THAT(bytesOf(m_folder / "Mean.lma"), HasSubstr("    0.0000    3.0000    5.0000\r\n"));
    EXPECT_EQ(m_state.notice, "Exported to " + (m_folder / "Mean.lma").string());
    EXPECT_THAT(m_works, ElementsAre("Exporting to Mean.lma ...", "", ""));
    m_export.mnuLumidorO_Click();
    ASSERT_EQ(m_messages.shown.size(), 1U);
    EXPECT_THAT(m_messages.shown[0].text,
                testing::StartsWith("Error saving " + pathText(wholePath("/proc/t.lma")) + "\n"));
}

TEST_F(ExportCommandsTest, ATypedNameWithAPointGetsItsExtension) {
    std::ofstream(m_folder / "Pilot1.5.lma") << "old";
    m_dialogs.answers = {m_folder / "Pilot1.5", m_folder / "Pilot1.5"};
    m_messages.answers = {MessageAnswer::No};
    m_export.mnuTab_Click();
    EXPECT_EQ(m_state.LastTabExport, (m_folder / "Pilot1.5.tab").string());
    EXPECT_TRUE(fs::exists(m_folder / "Pilot1.5.tab"));
    EXPECT_FALSE(fs::exists(m_folder / "Pilot1.5"));
    m_export.mnuLumidor_Click();
    EXPECT_EQ(bytesOf(m_folder / "Pilot1.5.lma"), "old");
    ASSERT_EQ(m_messages.shown.size(), 1U);
    EXPECT_THAT(m_messages.shown[0].text, HasSubstr("Pilot1.5.lma already exists"));
}

TEST_F(ExportCommandsTest, CancelIsSilent) {
    m_export.mnuTab_Click();
    m_export.mnuLumidor_Click();
    EXPECT_THAT(m_messages.shown, IsEmpty());
    EXPECT_EQ(m_state.LastTabExport, "");
    EXPECT_TRUE(m_state.TrialNotSaved());
}

TEST_F(ExportCommandsTest, AFailureIsToldAndLeavesTheLastExportAlone) {
    m_state.LastTabExport = "/before.tab";
    m_dialogs.answers = {fs::path("/proc/t.tab"), fs::path("/proc/t.lma")};
    m_export.mnuTab_Click();
    m_export.mnuLumidor_Click();
    ASSERT_EQ(m_messages.shown.size(), 2U);
    EXPECT_THAT(m_messages.shown[0].text,
                testing::StartsWith("Error saving " + pathText(wholePath("/proc/t.tab")) + "\n"));
    EXPECT_THAT(m_messages.shown[1].text,
                testing::StartsWith("Error saving " + pathText(wholePath("/proc/t.lma")) + "\n"));
    EXPECT_EQ(m_messages.shown[0].title, "Error");
    EXPECT_EQ(m_state.LastTabExport, "/before.tab");
    EXPECT_TRUE(m_state.TrialNotSaved());
}

TEST_F(ExportCommandsTest, ACancelledExportLeavesNoFile) {
    m_view.goesOn = false;
    m_dialogs.answers = {m_folder / "Arm.tab"};
    m_export.mnuTab_Click();
    EXPECT_FALSE(fs::exists(m_folder / "Arm.tab"));
    EXPECT_TRUE(m_state.TrialNotSaved());
    EXPECT_THAT(m_state.notice, HasSubstr("cancelled"));
    EXPECT_EQ(m_state.fileWork, "");
    EXPECT_THAT(m_messages.shown, IsEmpty());
}

TEST_F(ExportCommandsTest, AutosaveWithoutAskingTakesTheNextFreeName) {
    m_state.autosaveWithoutAsking = true;
    std::ofstream(m_folder / "Trial0001.tab") << "precious";
    m_export.autosaveTab();
    EXPECT_THAT(m_dialogs.asked, IsEmpty());
    EXPECT_EQ(bytesOf(m_folder / "Trial0001.tab"), "precious");
    EXPECT_TRUE(fs::exists(m_folder / "Trial0001 (2).tab"));
    EXPECT_EQ(m_state.notice, "Exported to " + (m_folder / "Trial0001 (2).tab").string());
    EXPECT_EQ(m_works.front(), "Exporting to Trial0001.tab ...");
    m_state.autosaveWithoutAsking = false;
    m_export.autosaveTab();
    EXPECT_EQ(m_dialogs.asked.size(), 1U);
}

TEST_F(ExportCommandsTest, WithoutATrialNothingIsAsked) {
    m_state.trials.CurrentTrial = nullptr;
    m_export.mnuTab_Click();
    m_export.mnuLumidor_Click();
    EXPECT_THAT(m_dialogs.asked, IsEmpty());
    EXPECT_EQ(m_state.notice, "There is no trial to export.");
    EXPECT_EQ(m_view.log.size(), 2U) << "and it is shown";
}

} // namespace
} // namespace tavex2::test
