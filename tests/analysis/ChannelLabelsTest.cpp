#include "analysis/ChannelLabels.h"

#include <gtest/gtest.h>

namespace tavex2 {
namespace {

class ChannelLabelsTest : public testing::Test {
  protected:
    ChannelLabelsTest() { state.settings.sampling.NumChannels = 3; }
    ProgramState state;
};

TEST_F(ChannelLabelsTest, EmptySlotsGetTheirDefaults) {
    state.header.Labels[2].assign("EMG");
    const ChannelLabels labels(state);
    ASSERT_EQ(labels.channels(), 3);
    EXPECT_EQ(labels.label(0), "Channel 00");
    EXPECT_EQ(labels.label(1), "EMG");
    EXPECT_EQ(labels.label(2), "Channel 02");
    EXPECT_EQ(labels.unit(2), "V");
    EXPECT_TRUE(state.header.Labels[0].neverSet()) << "the time's slot";
    EXPECT_TRUE(state.header.Labels[4].neverSet());
}

TEST_F(ChannelLabelsTest, TheHeaderCountsTheChannelsWhereTheSettingsDoNot) {
    state.settings.sampling.NumChannels = 0;
    state.header.NumChannels = 5;
    EXPECT_EQ(ChannelLabels(state).channels(), 5);
    state.header.NumChannels = 400; // a damaged record
    EXPECT_EQ(ChannelLabels(state).channels(), mostChannels);
}

TEST_F(ChannelLabelsTest, ShowsTitleRateAndDuration) {
    state.header.Title.assign("Tavex2 analog data file.");
    state.header.Rate = 1000;
    state.header.Duration = 2.5;
    const ChannelLabels labels(state);
    EXPECT_EQ(labels.title(), "Tavex2 analog data file.");
    EXPECT_EQ(labels.rate(), "1000.000");
    EXPECT_EQ(labels.duration(), "2.5000");
}

TEST_F(ChannelLabelsTest, AnswersAreCutAtTenCharactersAndEmptyOnesIgnored) {
    ChannelLabels labels(state);
    labels.enterLabel(0, "Gastrocnemius ");
    EXPECT_EQ(labels.label(0), "Gastrocnem");
    labels.enterLabel(0, "");
    EXPECT_EQ(labels.label(0), "Gastrocnem");
    labels.enterLabel(0, "   ");
    EXPECT_EQ(labels.label(0), "");
    EXPECT_FALSE(state.header.Labels[1].neverSet()) << "a blank label is a label";
    labels.enterUnit(1, "mV  ");
    EXPECT_EQ(labels.unit(1), "mV");
}

TEST_F(ChannelLabelsTest, TheLastUnitEnteredIsCopiedToAllChannels) {
    ChannelLabels labels(state);
    labels.cmdSelect_Click();
    EXPECT_EQ(labels.unit(0), "V") << "none was entered yet";
    labels.enterUnit(1, "N");
    labels.cmdSelect_Click();
    for (int channel = 0; channel < 3; ++channel)
        EXPECT_EQ(labels.unit(channel), "N");
    labels.enterUnit(1, "kg");
    labels.enterUnit(2, ""); // cancelled
    labels.cmdSelect_Click();
    EXPECT_EQ(labels.unit(0), "N");
    EXPECT_EQ(labels.unit(1), "kg");
}

TEST_F(ChannelLabelsTest, CancelPutsEverySlotBack) {
    state.header.Labels[1].assign("EMG");
    const LmbHeader before = state.header;
    ChannelLabels labels(state);
    labels.enterLabel(0, "other");
    labels.enterUnit(2, "N");
    labels.cmdSelect_Click();
    labels.cmdCancel_Click();
    EXPECT_EQ(state.header, before) << "slots never set are so again";
}

TEST_F(ChannelLabelsTest, LeadingBlanksStayAsTyped) {
    ChannelLabels labels(state);
    labels.enterLabel(0, "  left ");
    EXPECT_EQ(labels.label(0), "  left");
    labels.enterUnit(0, " mV ");
    EXPECT_EQ(labels.unit(0), " mV");
}

TEST_F(ChannelLabelsTest, TheCheckedChannelsAreInThePreviewAndAllWhereNoneIs) {
    ChannelLabels labels(state);
    EXPECT_EQ(labels.previewed(), (std::vector{0, 1, 2}));
    labels.chkChoose_Click(3, true);
    labels.chkChoose_Click(1, true);
    EXPECT_EQ(labels.previewed(), (std::vector{0, 2}));
    labels.chkChoose_Click(1, false);
    labels.chkChoose_Click(3, false);
    EXPECT_EQ(labels.previewed().size(), 3U);
}

TEST_F(ChannelLabelsTest, CopyUnitsAsksNoCheckBox) {
    ChannelLabels labels(state);
    labels.chkChoose_Click(2, true);
    labels.enterUnit(1, "N");
    labels.cmdSelect_Click();
    for (int channel = 0; channel < 3; ++channel)
        EXPECT_EQ(labels.unit(channel), "N");
}

} // namespace
} // namespace tavex2
