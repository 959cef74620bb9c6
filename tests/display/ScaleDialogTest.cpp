#include "display/ScaleDialog.h"

#include "display/FakeGraph.h"
#include "display/Scale.h"

#include <gmock/gmock.h>

#include <limits>

namespace tavex2::test {
namespace {

using testing::ElementsAre;

class ScaleDialogTest : public testing::Test {
  protected:
    ScaleDialogTest() {
        settings.sampling.Duration = 2.0F;
        settings.sampling.Repeat = 1;
        graphs.cwGLast.time.caption = "Last Trial  (seconds)";
    }

    void expectRanges(double left, double right, double lower, double upper) {
        for (const FakeGraph* graph : graphs.all()) {
            EXPECT_DOUBLE_EQ(graph->time.minimum, left);
            EXPECT_DOUBLE_EQ(graph->time.maximum, right);
            EXPECT_DOUBLE_EQ(graph->voltage.minimum, lower);
            EXPECT_DOUBLE_EQ(graph->voltage.maximum, upper);
        }
    }

    AcqSettings settings;
    FakeGraphs graphs;
    ZoomCommands zoom{graphs.controls()};
    ScaleDialog dialog{settings, graphs.controls(), zoom};
};

TEST_F(ScaleDialogTest, ResettingTheScaleShowsTheWholeTimeAndFitsTheVoltagesGraphByGraph) {
    settings.setup.DisplayAutoScale = false;
    settings.sampling.Repeat = 3;
    ASSERT_TRUE(mnuResetScale_Click(settings, graphs.controls()));
    EXPECT_TRUE(settings.setup.DisplayAutoScale);
    for (const FakeGraph* graph : graphs.all()) {
        EXPECT_EQ(graph->time.minimum, 0);
        EXPECT_EQ(graph->time.maximum, 6);
        EXPECT_THAT(graph->log, ElementsAre("time minimum", "time maximum", "voltage rescaled"));
    }
}

TEST_F(ScaleDialogTest, AnExtentThatIsNoNumberEndsTheReset) {
    settings.sampling.Repeat = 500;
    settings.sampling.Duration = std::numeric_limits<float>::max();
    const Result<void> reset = mnuResetScale_Click(settings, graphs.controls());
    ASSERT_FALSE(reset);
    EXPECT_EQ(reset.error().kind, ErrorKind::InvalidValue);
    EXPECT_THAT(graphs.cwG.log, ElementsAre());
}

TEST_F(ScaleDialogTest, OpensWithTheLimitsOfTheCurrentTrialsGraph) {
    settings.setup.DisplayAutoScale = false;
    graphs.cwG.voltage = {.minimum = -0.25, .maximum = 0.75};
    graphs.cwG.time = {.minimum = 0.1, .maximum = 1.5};
    dialog.Form_Load();
    const ScaleControls& shown = dialog.controls();
    EXPECT_EQ(shown.optTime, 1);
    EXPECT_EQ(shown.optVolts, 1);
    EXPECT_EQ(shown.optScale, 0);
    EXPECT_FALSE(shown.chkAutoScale);
    EXPECT_TRUE(shown.boxesEnabled);
    EXPECT_TRUE(shown.fraScaleTypeEnabled);
    EXPECT_EQ(shown.cwnUpper, 0.75);
    EXPECT_EQ(shown.cwnLower, -0.25);
    EXPECT_EQ(shown.cwnLeft, 0.1);
    EXPECT_EQ(shown.cwnRight, 1.5);
    EXPECT_EQ(shown.voltageFormat, "0 \"V\"");
    EXPECT_EQ(shown.leftFormat, "0 \"s\"");
    EXPECT_EQ(shown.rightFormat, "0 \"s\"");
}

TEST_F(ScaleDialogTest, HasItsFirstFormatsUntilItIsLoaded) {
    EXPECT_EQ(dialog.controls().voltageFormat, "#.000 \"V\"");
    EXPECT_EQ(dialog.controls().leftFormat, "0 \"ms\"");
    EXPECT_EQ(dialog.controls().rightFormat, "0 \"s\"");
}

TEST_F(ScaleDialogTest, OpeningAppliesTheUnitsSoTheLastTrialsCaptionLosesABlank) {
    dialog.Form_Load();
    EXPECT_EQ(graphs.cwG.time.caption, "Current Trial (seconds)");
    EXPECT_EQ(graphs.cwGLast.time.caption, "Last Trial (seconds)");
    EXPECT_EQ(graphs.cwGAvg.time.caption, "Saved Trials Average (seconds)");
    for (const FakeGraph* graph : graphs.all()) {
        EXPECT_EQ(graph->time.expression, "");
        EXPECT_EQ(graph->voltage.expression, "");
        EXPECT_EQ(graph->voltage.caption, "Voltage (volts)");
    }
}

TEST_F(ScaleDialogTest, OpensInThousandthsWhenTheyAreTheUnits) {
    settings.setup.DisplayInVolts = false;
    settings.setup.DisplayInSeconds = false;
    graphs.cwG.voltage = {.minimum = -0.25, .maximum = 0.75};
    dialog.Form_Load();
    const ScaleControls& shown = dialog.controls();
    EXPECT_EQ(shown.optTime, 0);
    EXPECT_EQ(shown.optVolts, 0);
    EXPECT_EQ(shown.cwnUpper, 750);
    EXPECT_EQ(shown.cwnLower, -250);
    EXPECT_EQ(shown.cwnLeft, 0);
    EXPECT_EQ(shown.cwnRight, 2000);
    EXPECT_EQ(shown.voltageFormat, "0 \"mV\"");
    EXPECT_EQ(shown.leftFormat, "0 \"ms\"");
    EXPECT_EQ(shown.rightFormat, "0 \"ms\"");
}

TEST_F(ScaleDialogTest, AutomaticScalingDisablesTheBoxesAndThePresets) {
    dialog.Form_Load();
    EXPECT_TRUE(dialog.controls().chkAutoScale);
    EXPECT_FALSE(dialog.controls().boxesEnabled);
    EXPECT_FALSE(dialog.controls().fraScaleTypeEnabled);
    dialog.chkAutoScale_Click(false);
    EXPECT_TRUE(dialog.controls().boxesEnabled);
    EXPECT_TRUE(dialog.controls().fraScaleTypeEnabled);
}

TEST_F(ScaleDialogTest, MillisecondsRelabelTheGraphsAtOnceAndStayAfterCancel) {
    dialog.Form_Load();
    dialog.optTime_Click(0);
    EXPECT_EQ(graphs.cwG.time.caption, "Current Trial (milliseconds)");
    EXPECT_EQ(graphs.cwGLast.time.caption, "Last Trial (milliseconds)");
    EXPECT_EQ(graphs.cwGAvg.time.caption, "Saved Trials Average (milliseconds)");
    for (const FakeGraph* graph : graphs.all())
        EXPECT_EQ(graph->time.expression, "*1000");
    EXPECT_FALSE(settings.setup.DisplayInSeconds);
    EXPECT_EQ(dialog.controls().cwnRight, 2000);
    EXPECT_EQ(dialog.controls().leftFormat, "0 \"ms\"");
    EXPECT_TRUE(settings.setup.DisplayAutoScale) << "nothing but the units has changed";
}

TEST_F(ScaleDialogTest, MillivoltsRelabelTheGraphsAtOnce) {
    dialog.Form_Load();
    dialog.optVolts_Click(0);
    for (const FakeGraph* graph : graphs.all()) {
        EXPECT_EQ(graph->voltage.expression, "*1000");
        EXPECT_EQ(graph->voltage.caption, "Voltage (millivolts)");
    }
    EXPECT_FALSE(settings.setup.DisplayInVolts);
    EXPECT_EQ(dialog.controls().cwnUpper, 10000);
    EXPECT_EQ(dialog.controls().cwnLower, -10000);
}

TEST_F(ScaleDialogTest, ChoosingTheSelectedUnitAgainDoesNothing) {
    dialog.Form_Load();
    dialog.optTime_Click(1);
    dialog.optVolts_Click(1);
    EXPECT_EQ(dialog.controls().cwnRight, 2);
    EXPECT_EQ(dialog.controls().cwnUpper, 10);
}

TEST_F(ScaleDialogTest, AnUnknownUnitOnlyResetsTheFactor) {
    settings.setup.DisplayInSeconds = false;
    settings.setup.DisplayAutoScale = false;
    dialog.Form_Load();
    dialog.optTime_Click(7);
    EXPECT_EQ(dialog.controls().cwnRight, 2000);
    EXPECT_FALSE(settings.setup.DisplayInSeconds);
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_EQ(graphs.cwG.time.maximum, 2000) << "the factor is 1 now";
}

TEST_F(ScaleDialogTest, APresetIsKeptAtOnceAlsoWithoutOK) {
    dialog.Form_Load();
    dialog.optScale_Click(3);
    EXPECT_EQ(settings.setup.DisplayPreset, 3);
}

TEST_F(ScaleDialogTest, OKWithAutomaticScalingFitsTheGraphs) {
    settings.sampling.Repeat = 2;
    dialog.Form_Load();
    ASSERT_TRUE(dialog.cmdOK_Click());
    for (const FakeGraph* graph : graphs.all()) {
        EXPECT_EQ(graph->time.maximum, 4);
        EXPECT_EQ(graph->voltage.rescaled, 1);
    }
    EXPECT_TRUE(settings.setup.DisplayAutoScale);
    EXPECT_FALSE(zoom.state().panButtonEnabled);
}

TEST_F(ScaleDialogTest, EveryPresetGoesBeforeTypedLimits) {
    settings.setup.DisplayAutoScale = false;
    const std::array<std::pair<double, double>, 5> ranges{{{-10, 10}, {-5, 5}, {0, 10}, {0, 5}, {-1, 1}}};
    for (int preset = 0; preset < 5; ++preset) {
        ScaleDialog each(settings, graphs.controls(), zoom);
        each.Form_Load();
        each.enterUpper(3);
        each.enterLower(2);
        each.optScale_Click(preset);
        ASSERT_TRUE(each.cmdOK_Click());
        expectRanges(0, 2, ranges[static_cast<std::size_t>(preset)].first,
                     ranges[static_cast<std::size_t>(preset)].second);
    }
    EXPECT_FALSE(settings.setup.DisplayAutoScale);
}

TEST_F(ScaleDialogTest, APresetBeyondTheListLeavesTypedLimitsAlsoTheWrongWayRound) {
    settings.setup.DisplayAutoScale = false;
    settings.setup.DisplayPreset = 9;
    dialog.Form_Load();
    dialog.enterUpper(2);
    dialog.enterLower(3);
    ASSERT_TRUE(dialog.cmdOK_Click());
    expectRanges(0, 2, 3, 2);
}

TEST_F(ScaleDialogTest, FixedLimitsSwitchContinuousAutoscalingOff) {
    dialog.Form_Load();
    dialog.chkAutoScale_Click(false);
    ASSERT_TRUE(dialog.cmdOK_Click());
    for (const FakeGraph* graph : graphs.all()) {
        EXPECT_FALSE(graph->time.autoScale);
        EXPECT_FALSE(graph->voltage.autoScale);
    }
    EXPECT_FALSE(settings.setup.DisplayAutoScale);
}

TEST_F(ScaleDialogTest, MillisecondsChosenInTheDialogAreTakenAsTheyStandInTheBoxes) {
    settings.setup.DisplayAutoScale = false;
    dialog.Form_Load();
    dialog.optTime_Click(0);
    dialog.enterLeft(500);
    ASSERT_TRUE(dialog.cmdOK_Click());
    expectRanges(500, 2000, -10, 10);
}

TEST_F(ScaleDialogTest, MillisecondsThatWereTheUnitAtOpeningAreDividedByAThousand) {
    settings.setup.DisplayAutoScale = false;
    settings.setup.DisplayInSeconds = false;
    dialog.Form_Load();
    dialog.enterLeft(500);
    dialog.enterRight(1500);
    ASSERT_TRUE(dialog.cmdOK_Click());
    expectRanges(0.5, 1.5, -10, 10);
}

TEST_F(ScaleDialogTest, APresetInMillivoltsSpansThousandthsOnlyWhenTheDialogOpenedInThem) {
    settings.setup.DisplayAutoScale = false;
    settings.setup.DisplayInVolts = false;
    dialog.Form_Load();
    dialog.optScale_Click(2);
    ASSERT_TRUE(dialog.cmdOK_Click());
    expectRanges(0, 2, 0, 0.01);
    EXPECT_EQ(dialog.controls().cwnUpper, 0.01);

    settings.setup.DisplayInVolts = true;
    ScaleDialog chosenInside(settings, graphs.controls(), zoom);
    chosenInside.Form_Load();
    chosenInside.optVolts_Click(0);
    ASSERT_TRUE(chosenInside.cmdOK_Click());
    expectRanges(0, 2, 0, 10);
}

TEST_F(ScaleDialogTest, TheTimeLabelsFollowTheVoltageOptionAtOK) {
    settings.setup.DisplayAutoScale = false;
    dialog.Form_Load();
    dialog.optVolts_Click(0);
    ASSERT_TRUE(dialog.cmdOK_Click());
    for (const FakeGraph* graph : graphs.all())
        EXPECT_EQ(graph->time.expression, "*1000");
    dialog.optVolts_Click(1);
    dialog.optTime_Click(0);
    ASSERT_TRUE(dialog.cmdOK_Click());
    for (const FakeGraph* graph : graphs.all())
        EXPECT_EQ(graph->time.expression, "*1");
}

TEST_F(ScaleDialogTest, TheFullWindowLeavesPanAsItWasAndANarrowerOneEnablesIt) {
    settings.setup.DisplayAutoScale = false;
    dialog.Form_Load();
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_FALSE(zoom.state().panButtonEnabled);
    EXPECT_FALSE(zoom.state().graphEnabled);

    dialog.enterRight(1.9);
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_TRUE(zoom.state().panButtonEnabled);
    EXPECT_TRUE(zoom.state().graphEnabled);
}

TEST_F(ScaleDialogTest, ALeftLimitAboveZeroEnablesPan) {
    settings.setup.DisplayAutoScale = false;
    dialog.Form_Load();
    dialog.enterLeft(0.001);
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_TRUE(zoom.state().panButtonEnabled);
}

TEST_F(ScaleDialogTest, ADurationThatSinglePrecisionRoundsUpIsStillTheFullWindow) {
    settings.setup.DisplayAutoScale = false;
    settings.sampling.Duration = 0.05F; // a little more than 0.05
    graphs.cwG.time.maximum = 0.05;
    dialog.Form_Load();
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_FALSE(zoom.state().panButtonEnabled);
}

TEST_F(ScaleDialogTest, TheComparisonTakesTheBoxesAsShown) {
    settings.setup.DisplayAutoScale = false;
    settings.setup.DisplayInSeconds = false;
    dialog.Form_Load();
    dialog.enterRight(500); // half a second, but 500 is more than the extent of 2
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_EQ(graphs.cwG.time.maximum, 0.5);
    EXPECT_FALSE(zoom.state().panButtonEnabled);
}

TEST_F(ScaleDialogTest, AnExtentThatIsNoNumberKeepsTheDialogOpen) {
    settings.sampling.Duration = std::numeric_limits<float>::infinity();
    dialog.Form_Load();
    EXPECT_FALSE(dialog.cmdOK_Click());
    dialog.chkAutoScale_Click(false);
    EXPECT_FALSE(dialog.cmdOK_Click());
    EXPECT_TRUE(settings.setup.DisplayAutoScale);
}

} // namespace
} // namespace tavex2::test
