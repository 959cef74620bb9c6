#include "display/ui/TrialGraphs.h"

#include "display/Trials.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace tavex2 {
namespace {

using test::makeTrial;
using test::trialOf;
using Axis = CWGraph::Axis;

class TrialGraphsTest : public testing::Test {
  protected:
    void setCurrent(const TrialData& samples, std::int32_t rateHz) {
        state.trials.CurrentTrial = trialOf(samples, rateHz);
    }

    CWGraph cwG;
    CWGraph cwGLast;
    CWGraph cwGAvg;
    TrialGraphs graphs{cwG, cwGLast, cwGAvg};
    ProgramState state;
};

TrialData ramp(int channels, std::int64_t samples, double highest) {
    return makeTrial(channels, samples, [=](int, std::int64_t i) {
        return highest * static_cast<double>(i) / static_cast<double>(samples - 1);
    });
}

TEST_F(TrialGraphsTest, StartWithTheirCaptions) {
    EXPECT_EQ(cwG.xCaption(), QStringLiteral("Current Trial (seconds)"));
    EXPECT_EQ(cwGLast.xCaption(), QStringLiteral("Last Trial  (seconds)"));
    EXPECT_EQ(cwGAvg.xCaption(), QStringLiteral("Saved Trials Average (seconds)"));
    for (const CWGraph* graph : {&cwG, &cwGLast, &cwGAvg})
        EXPECT_EQ(graph->yCaption(), QStringLiteral("Voltage (volts)"));
}

TEST_F(TrialGraphsTest, HaveAccessibleNamesAndSayThatTheyAreEmpty) {
    EXPECT_EQ(cwG.accessibleDescription(), QStringLiteral("Current trial: no data"));
    EXPECT_EQ(cwGLast.accessibleDescription(), QStringLiteral("Last trial: no data"));
    EXPECT_EQ(cwGAvg.accessibleDescription(), QStringLiteral("Saved trials average: no data"));
}

TEST_F(TrialGraphsTest, KeepANameAndAHintThatTheGraphHasAlready) {
    CWGraph named;
    named.setAccessibleName(QStringLiteral("Front leg"));
    named.setEmptyText(QStringLiteral("Nothing yet"));
    TrialGraphs others(named, cwGLast, cwGAvg);
    EXPECT_EQ(named.accessibleDescription(), QStringLiteral("Front leg: no data"));
    EXPECT_EQ(named.emptyText(), QStringLiteral("Nothing yet"));
}

TEST_F(TrialGraphsTest, WithoutTrialsShowTheTimeThatTheSettingsGive) {
    state.settings.sampling.Duration = 2.5F;
    state.settings.sampling.Repeat = 3;
    graphs.RedrawTrials(state);
    for (const CWGraph* graph : {&cwG, &cwGLast, &cwGAvg}) {
        EXPECT_EQ(graph->plotCount(), 0);
        EXPECT_EQ(graph->xMinimum(), 0);
        EXPECT_EQ(graph->xMaximum(), 7.5);
    }
}

TEST_F(TrialGraphsTest, ShowEachTrialOverItsOwnTimeAndVoltage) {
    setCurrent(ramp(2, 5001, 4.0), 1000);
    state.trials.LastTrial = trialOf(ramp(3, 101, 0.5), 200);
    state.settings.sampling.Rate = 7; // settings changed after the trials must not matter
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwG.plotCount(), 2);
    EXPECT_DOUBLE_EQ(cwG.xMaximum(), 5.0);
    EXPECT_GT(cwG.yMaximum(), 4.0);
    EXPECT_LT(cwG.yMaximum(), 4.5);
    EXPECT_EQ(cwGLast.plotCount(), 3);
    EXPECT_DOUBLE_EQ(cwGLast.xMaximum(), 0.5);
    EXPECT_LT(cwGLast.yMaximum(), 0.6);
    EXPECT_EQ(cwGAvg.plotCount(), 0);
}

TEST_F(TrialGraphsTest, RescaleAtEveryRedrawWhileAutomaticScalingIsOn) {
    setCurrent(ramp(1, 11, 4.0), 10);
    graphs.RedrawTrials(state);
    cwG.setAxisRange(Axis::Time, 0.2, 0.3);
    cwG.setAxisRange(Axis::Voltage, 1, 2);
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwG.xMinimum(), 0);
    EXPECT_EQ(cwG.xMaximum(), 1);
    EXPECT_GT(cwG.yMaximum(), 4.0);
}

TEST_F(TrialGraphsTest, KeepTheLimitsWhileAutomaticScalingIsOff) {
    state.settings.setup.DisplayAutoScale = false;
    for (CWGraph* graph : {&cwG, &cwGLast, &cwGAvg}) {
        graph->setAxisRange(Axis::Time, 0.2, 0.3);
        graph->setAxisRange(Axis::Voltage, 1, 2);
    }
    setCurrent(ramp(1, 11, 4.0), 10);
    state.trials.LastTrial = trialOf(ramp(1, 11, 8.0), 10);
    graphs.RedrawTrials(state);
    for (const CWGraph* graph : {&cwG, &cwGLast, &cwGAvg}) {
        EXPECT_EQ(graph->xMinimum(), 0.2);
        EXPECT_EQ(graph->xMaximum(), 0.3);
        EXPECT_EQ(graph->yMinimum(), 1);
        EXPECT_EQ(graph->yMaximum(), 2);
    }
    EXPECT_EQ(cwG.plotCount(), 1);
}

TEST_F(TrialGraphsTest, ShowTheMeanOfTheSavedTrials) {
    for (const auto& volts : {std::vector<double>{0, 3}, {0, 6}, {-3, 9}})
        ASSERT_TRUE(AddTrialToAverage(state.trials.average, *trialOf(makeTrial(volts), 10)));
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwGAvg.plotCount(), 1);
    EXPECT_EQ(cwGAvg.accessibleDescription(),
              QStringLiteral("Saved trials average: 1 channel of 2 samples, time 0 to 0.1 s, voltage -1 to 6 V"));
    EXPECT_EQ(cwGAvg.pyramid()->trial(), state.trials.average.AverageSum) << "the sum is read in place";

    ClearAverage(state.trials.average);
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwGAvg.plotCount(), 0);
    EXPECT_EQ(cwGAvg.pyramid(), nullptr);
}

TEST_F(TrialGraphsTest, DoNotReadAgainWhatIsShownAlready) {
    setCurrent(ramp(2, 1000, 1.0), 1000);
    graphs.RedrawTrials(state);
    const auto first = cwG.pyramid();
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwG.pyramid(), first);
}

TEST_F(TrialGraphsTest, HandThePyramidOnWhenTheCurrentTrialBecomesTheLast) {
    setCurrent(ramp(2, 1000, 1.0), 1000);
    graphs.RedrawTrials(state);
    const auto first = cwG.pyramid();

    state.trials.LastTrial = state.trials.CurrentTrial;
    setCurrent(ramp(2, 1000, 2.0), 1000);
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwGLast.pyramid(), first);
    EXPECT_NE(cwG.pyramid(), first);
    EXPECT_EQ(cwG.pyramid()->trial(), state.trials.CurrentTrial->samples);
}

TEST_F(TrialGraphsTest, ShareOnePyramidWhenCurrentAndLastTrialAreTheSame) {
    setCurrent(ramp(2, 1000, 1.0), 1000);
    state.trials.LastTrial = state.trials.CurrentTrial;
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwG.pyramid(), cwGLast.pyramid());
}

TEST_F(TrialGraphsTest, KeepThePyramidWhenTheTrialIsRenamedOrSaved) {
    setCurrent(ramp(2, 1000, 1.0), 1000);
    state.trials.LastTrial = state.trials.CurrentTrial;
    graphs.RedrawTrials(state);
    const auto first = cwG.pyramid();
    state.changeCurrent([](Trial& trial) { trial.name = "Another"; });
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwG.pyramid(), first);
    EXPECT_EQ(cwGLast.pyramid(), first);
}

TEST_F(TrialGraphsTest, LetGoOfTrialsThatAreNoLongerShown) {
    setCurrent(ramp(1, 1000, 1.0), 1000);
    graphs.RedrawTrials(state);
    const std::weak_ptr<const TrialArray> watched = state.trials.CurrentTrial->samples;
    setCurrent(nullptr, 1000); // a collection that drove no board
    graphs.RedrawTrials(state);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(cwG.plotCount(), 0);

    setCurrent(ramp(1, 1000, 1.0), 1000);
    graphs.RedrawTrials(state);
    const std::weak_ptr<const Trial> trial = state.trials.CurrentTrial;
    state.trials.CurrentTrial.reset();
    graphs.RedrawTrials(state);
    EXPECT_TRUE(trial.expired());
    EXPECT_EQ(cwG.plotCount(), 0);
}

TEST_F(TrialGraphsTest, EmptyGraphsFollowTheTimeOfTheCurrentTrial) {
    state.settings.sampling.Duration = 2.5F;
    setCurrent(ramp(1, 5001, 1.0), 1000);
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwGLast.plotCount(), 0);
    EXPECT_DOUBLE_EQ(cwGLast.xMaximum(), 5.0);
    EXPECT_DOUBLE_EQ(cwGAvg.xMaximum(), 5.0);
}

TEST_F(TrialGraphsTest, ScaleToTheFiniteSamplesOfATrialWithAnInfiniteOne) {
    setCurrent(makeTrial({0, 1, INFINITY, 4}), 1000);
    graphs.RedrawTrials(state);
    EXPECT_GT(cwG.yMaximum(), 4.0);
    EXPECT_LT(cwG.yMaximum(), 4.5);
    EXPECT_GT(cwG.yMinimum(), -0.5);
}

TEST_F(TrialGraphsTest, KeepTheLastPictureOfARealTimeViewUntilThereIsAnotherTrial) {
    setCurrent(ramp(2, 101, 1.0), 100);
    graphs.RedrawTrials(state);
    const auto trial = cwG.pyramid();
    cwG.plot(ramp(3, 51, 2.0), 0.01);
    cwG.setNote(QStringLiteral("Real time"));
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwG.plotCount(), 3);
    EXPECT_EQ(cwG.note(), QStringLiteral("Real time"));
    graphs.showCurrentTrial(state);
    EXPECT_EQ(cwG.pyramid()->trial(), trial->trial());
    EXPECT_EQ(cwG.note(), QString());

    cwG.plot(ramp(3, 51, 2.0), 0.01);
    cwG.setNote(QStringLiteral("Real time"));
    setCurrent(ramp(1, 101, 1.0), 100);
    graphs.RedrawTrials(state);
    EXPECT_EQ(cwG.plotCount(), 1);
    EXPECT_EQ(cwG.note(), QString());
}

} // namespace
} // namespace tavex2
