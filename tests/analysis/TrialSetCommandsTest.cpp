#include "analysis/TrialSetCommands.h"

#include "support/Fakes.h"
#include "support/Trials.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TrialSetCommandsTest : public testing::Test {
  protected:
    /// Makes this trial the current one, as a collection does.
    void take(const std::string& name, TrialData samples = trialOf({{1, 2}, {3, 4}}), std::int32_t rateHz = 1000) {
        collect(m_state, std::move(samples), rateHz, name);
    }
    /// Adds the current trial to the average, as saving it does.
    void average() {
        ASSERT_TRUE(AddTrialToAverage(m_state.trials.average, *m_state.trials.CurrentTrial));
        m_state.changeCurrent([](Trial& trial) { trial.AddedToAverage = true; });
    }
    const Trial& current() const { return *m_state.trials.CurrentTrial; }
    bool canUndo() const { return !m_state.cleared.empty(); }

    ProgramState m_state;
    FakeMessages m_messages;
    Log m_log;     ///< what the window was asked for
    Log m_notices; ///< what it told the user
    TrialSetCommands m_commands{m_state,
                                m_messages,
                                {.refresh =
                                     [this] {
                                         m_log.emplace_back("refresh");
                                         m_notices.push_back(m_state.notice);
                                     },
                                 .RedrawTrials = [this] { m_log.emplace_back("redraw"); }}};
};

// Overlays ------------------------------------------------------------------------------------------------------------

TEST_F(TrialSetCommandsTest, TheMarkFollowsSuccessRefusalAndClearing) {
    take("First");
    m_commands.mnuOverlay_Click();
    EXPECT_TRUE(current().AddedToOverlays);
    EXPECT_EQ(m_state.overlays.OverlayData[0]->name, "First");

    take("Second", trialOf({{1, 2}, {3, 4}}), 5);
    m_commands.mnuOverlay_Click();
    EXPECT_FALSE(current().AddedToOverlays);
    EXPECT_EQ(m_state.overlays.OverlayCount, 1);
    ASSERT_EQ(m_messages.shown.size(), 1U);
    EXPECT_EQ(m_messages.shown[0].text, "Can't overlay because properties are not the same.");
    EXPECT_EQ(m_messages.shown[0].title, "Error");
    EXPECT_EQ(m_messages.shown[0].buttons, MessageButtons::Ok);

    m_state.changeCurrent([](Trial& trial) { trial.AddedToOverlays = true; });
    m_commands.mnuClear_Click();
    EXPECT_FALSE(current().AddedToOverlays);
    EXPECT_EQ(m_state.overlays.OverlayCount, 0);
    EXPECT_THAT(m_log, ElementsAre("refresh", "refresh")) << "a refusal has its box";
}

TEST_F(TrialSetCommandsTest, EachOverlayTellsHowManyThereAre) {
    for (const std::string name : {"Trial0001", "Trial0002", "Trial0003"}) {
        take(name);
        m_commands.mnuOverlay_Click();
    }
    EXPECT_THAT(m_notices, ElementsAre("1 of 16 overlaid", "2 of 16 overlaid", "3 of 16 overlaid"));
    EXPECT_THAT(m_messages.shown, IsEmpty());
}

TEST_F(TrialSetCommandsTest, AnOverlayKeepsTheNameThatItsTrialHadThen) {
    take("Trial0001");
    m_commands.mnuOverlay_Click();
    m_state.rename("Arm");
    EXPECT_EQ(m_state.overlays.OverlayData[0]->name, "Trial0001");
}

TEST_F(TrialSetCommandsTest, TheSeventeenthOverlayIsRefused) {
    for (int k = 0; k < 17; ++k) {
        take("Trial");
        m_commands.mnuOverlay_Click();
    }
    EXPECT_EQ(m_state.overlays.OverlayCount, 16);
    EXPECT_EQ(m_state.notice, "16 of 16 overlaid");
    ASSERT_EQ(m_messages.shown.size(), 1U);
    EXPECT_EQ(m_messages.shown[0].text, "Maximum 16 overlays!");
    EXPECT_FALSE(current().AddedToOverlays);
}

TEST_F(TrialSetCommandsTest, WithoutSamplesThereIsNothingToOverlay) {
    m_commands.mnuOverlay_Click(); // before the first collection
    m_state.trials.CurrentTrial = std::make_shared<const Trial>();
    m_commands.mnuOverlay_Click(); // after one in debug mode
    EXPECT_EQ(m_state.overlays.OverlayCount, 0);
    EXPECT_THAT(m_notices, ElementsAre("There is no trial to overlay.", "There is no trial to overlay."));
}

TEST_F(TrialSetCommandsTest, UndoBringsTheClearedOverlaysBack) {
    take("Trial0001");
    m_commands.mnuOverlay_Click();
    take("Trial0002");
    m_commands.mnuOverlay_Click();
    m_commands.mnuClear_Click();
    EXPECT_EQ(m_state.notice, "The overlay is cleared; Edit > Undo brings it back.");
    ASSERT_TRUE(canUndo());

    m_commands.mnuUndo_Click();
    EXPECT_EQ(m_state.overlays.OverlayCount, 2);
    EXPECT_EQ(m_state.overlays.OverlayData[0]->name, "Trial0001");
    EXPECT_EQ(m_state.overlays.OverlayData[1]->name, "Trial0002");
    EXPECT_TRUE(current().AddedToOverlays);
    EXPECT_EQ(m_state.notice, "The overlay is back, with 2 trials.");
    EXPECT_FALSE(canUndo()) << "one step";
}

TEST_F(TrialSetCommandsTest, OverlaysThatJoinedSinceTheClearingLeaveWithIt) {
    take("Trial0001");
    m_commands.mnuOverlay_Click();
    m_commands.mnuClear_Click();
    take("Trial0002", trialOf({{5, 6}}), 500);
    m_commands.mnuOverlay_Click();
    m_commands.mnuUndo_Click();
    EXPECT_EQ(m_state.overlays.OverlayCount, 1);
    EXPECT_EQ(m_state.overlays.OverlayData[0]->name, "Trial0001");
    EXPECT_EQ(m_state.overlays.OverlaySettings.Rate, 1000);
    EXPECT_FALSE(current().AddedToOverlays) << "it may be added again";
}

TEST_F(TrialSetCommandsTest, UndoKnowsAnOverlaidTrialByItsSamplesWhateverItIsCalledNow) {
    take("Trial0001");
    m_commands.mnuOverlay_Click();
    m_commands.mnuClear_Click();
    m_state.rename("Arm");
    m_commands.mnuUndo_Click();
    EXPECT_TRUE(current().AddedToOverlays);
    EXPECT_EQ(m_state.overlays.OverlayData[0]->name, "Trial0001");
}

// The average ---------------------------------------------------------------------------------------------------------

TEST_F(TrialSetCommandsTest, UndoBringsTheClearedAverageBack) {
    take("Trial0001");
    average();
    take("Trial0002", trialOf({{5, 6}, {7, 8}}));
    average();
    m_commands.mnuClearAverage_Click();
    EXPECT_TRUE(m_state.trials.average.empty());
    EXPECT_EQ(m_state.notice, "The average is cleared; Edit > Undo brings it back.");
    EXPECT_THAT(m_log, ElementsAre("redraw", "refresh"));
    ASSERT_TRUE(canUndo());

    m_commands.mnuUndo_Click();
    const TrialAverage& average = m_state.trials.average;
    EXPECT_EQ(average.AverageCount, 2);
    EXPECT_EQ(average.first, "Trial0001");
    EXPECT_EQ(average.AverageSettings.Rate, 1000);
    EXPECT_EQ(average.AverageSum->at(0, 0), 6.0);
    EXPECT_EQ(average.AverageSum->at(1, 1), 12.0);
    EXPECT_TRUE(current().AddedToAverage);
    EXPECT_EQ(m_state.notice, "The average is back, with 2 trials.");
    EXPECT_THAT(m_log, ElementsAre("redraw", "refresh", "redraw", "refresh"));
    EXPECT_FALSE(canUndo()) << "one step";
}

TEST_F(TrialSetCommandsTest, ATrialThatWasAveragedBeforeTheClearingDoesNotJoinAgain) {
    take("Trial0001");
    average();
    m_commands.mnuClearAverage_Click();
    EXPECT_TRUE(current().AddedToAverage);
}

TEST_F(TrialSetCommandsTest, ATrialThatJoinedTheAverageSinceTheClearingLeavesItAndMayJoinAgain) {
    take("Trial0001");
    average();
    m_commands.mnuClearAverage_Click();
    take("Trial0002");
    average();
    m_commands.mnuUndo_Click();
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_EQ(m_state.trials.average.first, "Trial0001");
    EXPECT_FALSE(current().AddedToAverage);
    EXPECT_EQ(m_state.notice, "The average is back, with 1 trial.");
}

TEST_F(TrialSetCommandsTest, ATrialThatWasSavedOnlyAfterTheClearingMayJoinTheAverageThatIsBack) {
    take("Trial0001");
    average();
    take("Trial0002");
    m_commands.mnuClearAverage_Click();
    average();
    m_commands.mnuUndo_Click();
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_FALSE(current().AddedToAverage);
}

// Undo ----------------------------------------------------------------------------------------------------------------

TEST_F(TrialSetCommandsTest, WithNothingClearedThereIsNothingToUndo) {
    EXPECT_FALSE(canUndo());
    take("Trial0001");
    m_commands.mnuOverlay_Click();
    average();
    EXPECT_FALSE(canUndo()) << "filling a set is no step";
    m_log.clear();
    m_commands.mnuUndo_Click();
    EXPECT_EQ(m_state.overlays.OverlayCount, 1);
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(TrialSetCommandsTest, UndoTakesBackTheLastClearingOnly) {
    take("Trial0001");
    m_commands.mnuOverlay_Click();
    average();
    m_commands.mnuClear_Click();
    m_commands.mnuClearAverage_Click();
    m_commands.mnuUndo_Click();
    m_commands.mnuUndo_Click();
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_EQ(m_state.overlays.OverlayCount, 0);
}

TEST_F(TrialSetCommandsTest, ClearingWhatIsEmptyKeepsWhatUndoBringsBack) {
    take("Trial0001");
    average();
    m_commands.mnuClearAverage_Click();
    m_notices.clear();
    m_commands.mnuClearAverage_Click(); // a second click
    m_commands.mnuClear_Click();
    EXPECT_THAT(m_notices, ElementsAre("There is no average to clear.", "There is no overlay to clear."));
    m_commands.mnuUndo_Click();
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_EQ(m_state.trials.average.first, "Trial0001");
}

} // namespace
} // namespace tavex2::test
