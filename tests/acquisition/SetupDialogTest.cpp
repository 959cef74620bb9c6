#include "acquisition/SetupDialog.h"

#include "acquisition/AcqFields.h"
#include "acquisition/Sound.h"
#include "acquisition/StartCondition.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <limits>

namespace tavex2::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class SetupDialogTest : public testing::Test {
  protected:
    SetupDialogTest() {
        state.settings.sound = {
            .SoundBefore = false, .SoundAvailable = true, .SoundFreq = 500, .SoundDuration = 0.5, .SoundAfter = false};
        input.selectDevice(1);
        state.paths.DataDir = folder.path().string();
    }

    SetupDialog make() {
        return {state,
                {.analogInput = input,
                 .sound = sound,
                 .toneFile = folder / "tone.wav",
                 .storage = {.fileBytes = [](int channels, std::int64_t samples) -> std::optional<std::uint64_t> {
                                 return 1000U + 4U * static_cast<std::uint64_t>(samples * (channels + 1));
                             },
                             .freeBytes =
                                 [this](const std::filesystem::path& where) {
                                     askedAbout = where;
                                     return freeBytes;
                                 }}}};
    }
    SetupDialog opened() {
        SetupDialog dialog = make();
        dialog.Form_Load();
        return dialog;
    }

    TemporaryFolder folder;
    ProgramState state;
    FakeAnalogInput input;
    FakeSound sound;
    std::optional<std::uint64_t> freeBytes = 1'000'000;
    std::filesystem::path askedAbout;
};

TEST_F(SetupDialogTest, ShowsEveryField) {
    AcqSettings& settings = state.settings;
    settings.sampling.DIOMask = 0b101;
    settings.sampling.DIOLatency = {10, 20, 30, 40, 50, 60, 70, 80};
    settings.sampling.Channels.assign(" 0:3 ");
    settings.sampling.Rate = 2500;
    settings.sampling.Duration = 1.25F;
    settings.sampling.UpperVolts = 5;
    settings.sampling.LowerVolts = -2.5F;
    settings.sampling.Repeat = 7;
    settings.setup.SaveOffsets = true;
    settings.setup.PauseToReset = true;
    settings.setup.Autosave = true;
    settings.setup.SaveType = 1;
    settings.setup.Comments = true;
    settings.setup.StartDelay = 9;
    settings.setup.TriggerMode = 1;
    settings.setup.TrialNumber = 42;
    settings.setup.FilePrefix = " Leg ";
    settings.trigger = {.TriggerLevel = 2.5F,
                        .TriggerRising = false,
                        .Pretrigger = 25,
                        .TriggerChannel = "3",
                        .RandomSound = true,
                        .RandomRatio = 2};
    settings.sound.SoundAfter = true;
    const ProgramState before = state;

    const SetupDialog dialog = opened();
    const SetupControls& c = dialog.controls();
    EXPECT_EQ(c.cbDIO, (std::array{true, false, true}));
    EXPECT_EQ(c.cwnLatency, (std::array{10.0, 20.0, 30.0}));
    EXPECT_EQ(c.txtChannels, "0:3");
    EXPECT_EQ(c.cwnRate, 2500);
    EXPECT_EQ(c.cwnDuration, 1.25);
    EXPECT_EQ(c.cwnUpper, 5);
    EXPECT_EQ(c.cwnLower, -2.5);
    EXPECT_EQ(c.cwnRepeat, 7);
    EXPECT_EQ(c.cwnStartDelay, 9);
    EXPECT_EQ(c.optTrigger, 1);
    EXPECT_TRUE(c.triggerConditionsEnabled());
    EXPECT_EQ(c.CWNumTriggerChannel, 3);
    EXPECT_EQ(c.CWNumTriggerLevel, 2.5);
    EXPECT_EQ(c.CWNumPretrigger, 25);
    EXPECT_EQ(c.optTriggerSlope, 1);
    EXPECT_TRUE(c.chkOffsets);
    EXPECT_TRUE(c.chkPauseToReset);
    EXPECT_TRUE(c.chkComments);
    EXPECT_FALSE(c.chkRandom) << "never preset";
    EXPECT_TRUE(c.chkAutosave);
    EXPECT_EQ(c.optSaveType, 1);
    EXPECT_EQ(c.txtFilename, "Leg");
    EXPECT_EQ(c.CWNumTrial, 42);
    EXPECT_TRUE(c.soundUsable);
    EXPECT_EQ(c.cbSound, (std::array{false, true}));
    EXPECT_EQ(c.cwnSoundFreq, 500);
    EXPECT_EQ(c.cwnSoundDuration, 0.5);
    EXPECT_TRUE(c.toneEnabled());
    EXPECT_EQ(c.cwnDevice, 1);
    EXPECT_EQ(c.txtDevice, "Fake board");
    EXPECT_EQ(state.settings, before.settings) << "opening changes nothing";
}

TEST_F(SetupDialogTest, CancelStoresNothingAndSelectsTheOldDeviceAgain) {
    const AcqSettings before = state.settings;
    SetupDialog dialog = opened();
    dialog.controls().cwnRate = 5;
    dialog.controls().txtChannels = "7";
    dialog.cwnDevice_ValueChanged(4);
    EXPECT_EQ(input.device(), 4) << "at once";
    dialog.cmdCancel_Click();
    EXPECT_EQ(input.device(), 1);
    EXPECT_EQ(state.settings, before);
}

TEST_F(SetupDialogTest, TriggerModeAndSoundChangeWithTheClickAndOutliveCancel) {
    SetupDialog dialog = opened();
    dialog.optTrigger_Click(1);
    dialog.cbSound_Click(0, true);
    dialog.cmdCancel_Click();
    EXPECT_EQ(state.settings.setup.TriggerMode, 1);
    EXPECT_TRUE(state.settings.sound.SoundBefore);
    EXPECT_FALSE(state.settings.sound.SoundAfter);
    EXPECT_FALSE(state.flags.TriggerEnabled) << "that takes OK";
    EXPECT_EQ(input.config.start.type, StartCondition::Type::None);
}

TEST_F(SetupDialogTest, OKStoresEveryField) {
    state.settings.sampling.DIOState = {9, 9, 9, 9, 9, 9, 9, 9};
    state.settings.sampling.DIOMask = 0b11111000;
    SetupDialog dialog = opened();
    SetupControls& c = dialog.controls();
    c.cbDIO = {false, true, true};
    c.cwnLatency = {1, 2, 32767};
    c.txtChannels = "0,2,4:6";
    c.cwnRate = 100000;
    c.cwnDuration = 0.01;
    c.cwnUpper = 9.5;
    c.cwnLower = -1.5;
    c.cwnRepeat = 500;
    c.cwnStartDelay = 30;
    c.CWNumTriggerLevel = -9.8;
    c.CWNumPretrigger = 95;
    c.CWNumTriggerChannel = 3;
    c.optTriggerSlope = 1;
    c.chkRandom = true;
    c.chkAutosave = true;
    c.optSaveType = 1;
    c.chkOffsets = true;
    c.chkPauseToReset = true;
    c.chkComments = true;
    c.CWNumTrial = 9999;
    c.txtFilename = "Arm";
    c.cwnSoundFreq = 800;
    c.cwnSoundDuration = 0.02;
    dialog.cwnDevice_ValueChanged(2);
    ASSERT_TRUE(dialog.cmdOK_Click());

    const auto& [setup, sampling, trigger, tone] = state.settings;
    EXPECT_EQ(sampling.DIOMask, 0b110);
    EXPECT_EQ(sampling.DIOLatency, (std::array<std::int16_t, 8>{1, 2, 32767, 5, 5, 5, 5, 5}));
    EXPECT_EQ(sampling.DIOState, (std::array<std::int16_t, 8>{1, 1, 1, 9, 9, 9, 9, 9}));
    EXPECT_EQ(sampling.Channels.trimmed(), "0,2,4:6");
    EXPECT_EQ(sampling.Rate, 100000);
    EXPECT_EQ(sampling.Duration, 0.01F);
    EXPECT_EQ(sampling.UpperVolts, 9.5F);
    EXPECT_EQ(sampling.LowerVolts, -1.5F);
    EXPECT_EQ(sampling.Repeat, 500);
    EXPECT_EQ(setup.StartDelay, 30);
    EXPECT_EQ(trigger.TriggerLevel, -9.8F);
    EXPECT_EQ(trigger.Pretrigger, 95);
    EXPECT_EQ(trigger.TriggerChannel, "3");
    EXPECT_FALSE(trigger.TriggerRising);
    EXPECT_TRUE(trigger.RandomSound);
    EXPECT_EQ(trigger.RandomRatio, 2);
    EXPECT_TRUE(setup.Autosave);
    EXPECT_EQ(setup.SaveType, 1);
    EXPECT_TRUE(setup.SaveOffsets);
    EXPECT_TRUE(setup.PauseToReset);
    EXPECT_TRUE(setup.Comments);
    EXPECT_EQ(setup.Device, 2);
    EXPECT_EQ(setup.TrialNumber, 9999);
    EXPECT_EQ(setup.FilePrefix, "Arm");
    EXPECT_EQ(tone.SoundFreq, 800);
    EXPECT_EQ(tone.SoundDuration, 0.02);
}

TEST_F(SetupDialogTest, OKWithoutAChangeChangesOnlyWhatItAlwaysSets) {
    state.settings.setup.TriggerMode = 1;
    AcqSettings expected = state.settings;
    expected.trigger.RandomRatio = 2;
    ASSERT_TRUE(opened().cmdOK_Click());
    EXPECT_EQ(state.settings, expected);
}

TEST_F(SetupDialogTest, AChannelListIsCutAtFiftyCharacters) {
    SetupDialog dialog = opened();
    dialog.controls().txtChannels = std::string(60, '1');
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_EQ(state.settings.sampling.Channels.trimmed(), std::string(50, '1'));
}

TEST_F(SetupDialogTest, OKSetsTheStartConditionOfTheTriggerChannel) {
    state.settings.sampling.Rate = 1000;
    state.settings.sampling.Duration = 2.0F;
    SetupDialog dialog = opened();
    dialog.optTrigger_Click(1);
    dialog.controls().CWNumTriggerLevel = 5;
    dialog.controls().CWNumTriggerChannel = 1;
    dialog.controls().CWNumPretrigger = 10;
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_TRUE(state.flags.TriggerEnabled);
    const StartCondition& start = input.config.start;
    EXPECT_EQ(start.type, StartCondition::Type::AnalogLevel);
    EXPECT_EQ(start.levelVolts, 5);
    EXPECT_EQ(start.secondThresholdVolts, 4.5);
    EXPECT_EQ(start.channel, "1");
    EXPECT_EQ(start.preTriggerScans, 200);
    EXPECT_TRUE(start.rising);

    SetupDialog again = opened();
    again.optTrigger_Click(0);
    ASSERT_TRUE(again.cmdOK_Click());
    EXPECT_FALSE(state.flags.TriggerEnabled);
    EXPECT_EQ(input.config.start.type, StartCondition::Type::None);
}

TEST_F(SetupDialogTest, OKWritesTheToneAnew) {
    SetupDialog dialog = opened();
    dialog.controls().cwnSoundFreq = 1000;
    dialog.controls().cwnSoundDuration = 0.1;
    ASSERT_TRUE(dialog.cmdOK_Click());
    TemporaryFolder other;
    ASSERT_TRUE(WriteTone(other / "tone.wav", 1000, 0.1));
    EXPECT_EQ(bytesOf(folder / "tone.wav"), bytesOf(other / "tone.wav"));
    EXPECT_GT(bytesOf(folder / "tone.wav").size(), 44U);
}

TEST_F(SetupDialogTest, WithoutASoundDeviceTheSoundIsOffAndNoToneIsWritten) {
    sound.devices = 0;
    state.settings.sound.SoundBefore = true; // from a setup file of another machine
    state.settings.sound.SoundAfter = true;
    SetupDialog dialog = opened();
    EXPECT_FALSE(dialog.controls().soundUsable);
    EXPECT_EQ(dialog.controls().cbSound, (std::array{false, false}));
    EXPECT_FALSE(dialog.controls().toneEnabled());
    EXPECT_TRUE(state.settings.sound.SoundBefore) << "opening changes nothing";
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_FALSE(state.settings.sound.SoundBefore);
    EXPECT_FALSE(state.settings.sound.SoundAfter);
    EXPECT_EQ(state.settings.sound.SoundFreq, 500);
    EXPECT_FALSE(std::filesystem::exists(folder / "tone.wav"));
}

TEST_F(SetupDialogTest, TheToneFieldsFollowTheSoundBoxes) {
    SetupDialog dialog = opened();
    EXPECT_FALSE(dialog.controls().toneEnabled());
    dialog.cbSound_Click(1, true);
    EXPECT_TRUE(dialog.controls().toneEnabled());
    dialog.cbSound_Click(1, false);
    EXPECT_FALSE(dialog.controls().toneEnabled());
}

TEST_F(SetupDialogTest, ADelayThatCannotBeStoredIsRefusedBeforeAnythingIs) {
    const AcqSettings before = state.settings;
    SetupDialog dialog = opened();
    dialog.controls().cwnRate = 5;
    dialog.controls().cwnLatency[1] = 32768;
    EXPECT_THAT(dialog.meaning().warnings, HasSubstr("32767 ms"));
    const Result<void> stored = dialog.cmdOK_Click();
    ASSERT_FALSE(stored);
    EXPECT_THAT(stored.error().text, HasSubstr("DIO 1"));
    EXPECT_THAT(stored.error().text, HasSubstr("32767 ms"));
    EXPECT_EQ(state.settings, before);
}

TEST_F(SetupDialogTest, ValuesOutsideTheirRangesAreShownAndKeptUntilTheyAreEdited) {
    state.settings.sampling.Duration = -3;
    state.settings.setup.TrialNumber = 12000;
    state.settings.trigger.TriggerChannel = "wild";
    SetupDialog dialog = opened();
    EXPECT_EQ(dialog.controls().cwnDuration, -3);
    EXPECT_EQ(dialog.controls().CWNumTriggerChannel, 0);
    EXPECT_THAT(dialog.meaning().warnings, HasSubstr("Duration"));
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_EQ(state.settings.sampling.Duration, -3);
    EXPECT_EQ(state.settings.setup.TrialNumber, 12000);
}

// What the settings come to -------------------------------------------------------------------------------------------

TEST_F(SetupDialogTest, TheSummaryFollowsTheControls) {
    SetupDialog dialog = opened();
    dialog.controls().txtChannels = "0:3";
    dialog.controls().cwnRate = 1000;
    dialog.controls().cwnDuration = 1;
    EXPECT_EQ(dialog.meaning().summary, "1001 samples of 4 channels a trial: 32.0 kB in memory, 21.0 kB in a file; the "
                                        "data folder has room for 47 trials. One start collects 1 trial in 1 s.");
    EXPECT_THAT(dialog.meaning().warnings, IsEmpty());
    dialog.controls().txtChannels = "0";
    EXPECT_THAT(dialog.meaning().summary, HasSubstr("1001 samples of 1 channel a trial"));
    freeBytes.reset();
    EXPECT_THAT(dialog.meaning().summary, HasSubstr("in a file. One start"));
}

TEST_F(SetupDialogTest, TheSummaryTellsTheWholeRun) {
    state.settings.sampling.DIOMask = 0;
    SetupDialog dialog = opened();
    SetupControls& c = dialog.controls();
    c.cwnRate = 1000;
    c.cwnDuration = 2;
    const auto run = [&dialog] {
        const std::string text = dialog.meaning().summary;
        return text.substr(std::min(text.find("One start"), text.size()));
    };
    EXPECT_EQ(run(), "One start collects 1 trial in 2 s.");
    c.cwnStartDelay = 5;
    EXPECT_EQ(run(), "One start collects 1 trial in 7 s, the delay included.");
    c.cwnRepeat = 3;
    EXPECT_EQ(run(), "One start collects 3 trials in 11 s, the delay included.");
    dialog.optTrigger_Click(1);
    c.CWNumPretrigger = 10;
    EXPECT_EQ(run(),
              "One start collects 3 trials in 11 s, the delay included, and waits for the trigger. The first begins "
              "200 ms before the trigger; the others follow without one.");
    c.cwnRepeat = 1;
    c.cwnStartDelay = 0;
    c.CWNumPretrigger = 0;
    EXPECT_EQ(run(),
              "One start collects 1 trial in 2 s, and waits for the trigger. It begins 0 ms before the trigger.");
    dialog.optTrigger_Click(0);
    c.cwnRepeat = 500;
    EXPECT_EQ(run(), "One start collects 500 trials in 16 min 40 s.");
    c.cwnDuration = 60;
    EXPECT_EQ(run(), "One start collects 500 trials in 8 h 20 min.");
}

TEST_F(SetupDialogTest, TheSummaryTellsHowLongTheWindowStandsStillForPulses) {
    SetupDialog dialog = opened();
    SetupControls& c = dialog.controls();
    c.cwnDuration = 2;
    c.cbDIO = {true, false, true};
    c.cwnLatency = {20, 3000, 50};
    EXPECT_THAT(dialog.meaning().summary, Not(HasSubstr("stands still"))) << "nobody notices 50 ms";
    c.cbDIO[1] = true;
    EXPECT_THAT(dialog.meaning().summary, HasSubstr("The window stands still for 3 s while the pulses are given."));
    c.cwnRepeat = 4;
    c.cbDIO = {true, false, false};
    EXPECT_THAT(dialog.meaning().summary, HasSubstr("stands still for 6.02 s"));
}

TEST_F(SetupDialogTest, ItWarnsWhenTheDiskIsTooFullForOneStart) {
    freeBytes = 20'000;
    SetupDialog dialog = opened();
    dialog.controls().cwnRate = 100;
    dialog.controls().cwnDuration = 2;
    EXPECT_THAT(dialog.meaning().warnings, IsEmpty());
    dialog.controls().cwnRepeat = 10;
    EXPECT_EQ(dialog.meaning().warnings, "Folder: the disk is too full for what one start collects.");
}

TEST_F(SetupDialogTest, WarningsNameTheBoxesAndNotTheFields) {
    const auto warned = [this](const auto& change, int trigger = 0) {
        state.settings = {};
        change(state.settings);
        SetupDialog dialog = opened();
        dialog.controls().optTrigger = trigger;
        return dialog.meaning().warnings;
    };
    EXPECT_EQ(warned([](auto& s) { s.sampling.Rate = 0; }),
              "Rate: must be a whole number from 1 to 100000 Hz, not \"0\".");
    EXPECT_THAT(warned([](auto& s) { s.sampling.UpperVolts = 12; }), StartsWith("Upper: must be"));
    EXPECT_THAT(warned([](auto& s) { s.sampling.LowerVolts = -12; }), StartsWith("Lower: must be"));
    EXPECT_THAT(warned([](auto& s) { s.setup.StartDelay = -1; }), StartsWith("Start delay (s): must be"));
    EXPECT_THAT(warned([](auto& s) { s.sampling.DIOLatency[1] = -1; }), StartsWith("Delay: must be"));
    EXPECT_THAT(warned([](auto& s) { s.setup.FilePrefix = "a/b"; }), StartsWith("Filename: becomes part of"));
    EXPECT_THAT(warned([](auto& s) { s.trigger.TriggerLevel = 10; }, 1), StartsWith("Level: must be"));
    EXPECT_THAT(warned([](auto& s) { s.trigger.Pretrigger = 99; }, 1), StartsWith("Pretrigger %: must be"));
}

TEST_F(SetupDialogTest, AStoredListThatMayHaveBeenCutIsTold) {
    state.settings.sampling.Channels.assign("63,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,20:25");
    EXPECT_EQ(opened().meaning().warnings,
              "Channels: the list fills its 50 characters and may have been cut in \"20:25\".");
    state.settings.sampling.Channels.assign("0,63,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,20:25");
    EXPECT_THAT(opened().meaning().warnings, StartsWith("Channels: fills its 50 characters and was cut in \"20:\"."));
}

// The data folder -----------------------------------------------------------------------------------------------------

TEST_F(SetupDialogTest, TheDataFolderIsStoredByOKOnly) {
    const TemporaryFolder other;
    SetupDialog dialog = opened();
    EXPECT_EQ(dialog.controls().txtFolder, folder.path().string());
    dialog.txtFolder_Changed(other.path().string());
    EXPECT_THAT(dialog.meaning().warnings, IsEmpty());
    EXPECT_EQ(askedAbout, other.path()) << "the room is that of the folder shown";
    dialog.cmdCancel_Click();
    EXPECT_EQ(state.paths.DataDir, folder.path().string());
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_EQ(state.paths.DataDir, other.path().string());
    EXPECT_TRUE(std::filesystem::is_empty(other.path())) << "looking at a folder leaves nothing there";
}

TEST_F(SetupDialogTest, ANewDataFolderMustExistAndTakeFiles) {
    const AcqSettings before = state.settings;
    SetupDialog dialog = opened();
    dialog.controls().cwnRate = 5;
    const auto refused = [&](const std::string& where) {
        dialog.txtFolder_Changed(where);
        EXPECT_THAT(dialog.meaning().warnings, HasSubstr("Folder: "));
        const Result<void> stored = dialog.cmdOK_Click();
        return stored ? "accepted" : stored.error().text;
    };
    std::ofstream(folder / "file") << "x";
    EXPECT_THAT(refused((folder / "none").string()), HasSubstr("none is no folder. Create it or choose another one."));
    EXPECT_THAT(refused((folder / "file").string()), HasSubstr("file is no folder."));
    EXPECT_THAT(refused(""), HasSubstr("Enter the folder"));
#ifdef __linux__
    EXPECT_THAT(refused("/proc/self"), HasSubstr("/proc/self cannot be written to."));
#endif
    EXPECT_EQ(state.settings, before);
    EXPECT_EQ(state.paths.DataDir, folder.path().string());
}

TEST_F(SetupDialogTest, ADataFolderThatIsGoneIsToldAndKeepsNothingElseFromBeingStored) {
    state.paths.DataDir = (folder / "gone").string();
    SetupDialog dialog = opened();
    EXPECT_THAT(dialog.meaning().warnings, HasSubstr("gone is no folder"));
    dialog.controls().cwnRate = 5;
    ASSERT_TRUE(dialog.cmdOK_Click());
    EXPECT_EQ(state.settings.sampling.Rate, 5);
}

// What the board says -------------------------------------------------------------------------------------------------

TEST_F(SetupDialogTest, ItAsksTheBoardAboutWhatOKWouldConfigure) {
    AnalogInputConfig seen;
    input.refuse = [&](const AnalogInputConfig& asked) {
        seen = asked;
        return std::string("The board cannot do that.");
    };
    SetupDialog dialog = opened();
    dialog.controls().cwnRate = 77;
    dialog.optTrigger_Click(1);
    dialog.controls().CWNumTriggerChannel = 5;
    EXPECT_EQ(dialog.meaning().warnings, "The board cannot do that.");
    EXPECT_EQ(seen.scanRateHz, 77);
    EXPECT_EQ(seen.start.channel, "5");
    EXPECT_EQ(input.config.scanRateHz, 0) << "only asked";
    ASSERT_TRUE(dialog.cmdOK_Click()) << "it warns and forbids nothing";
}

TEST_F(SetupDialogTest, ItWarnsOfALevelThatNothingCanReach) {
    SetupDialog dialog = opened();
    dialog.optTrigger_Click(1);
    dialog.controls().cwnUpper = 1;
    dialog.controls().CWNumTriggerLevel = 1.5;
    EXPECT_THAT(dialog.meaning().warnings, HasSubstr("outside the voltage limits"));
    dialog.optTrigger_Click(0);
    EXPECT_THAT(dialog.meaning().warnings, IsEmpty());
}

TEST_F(SetupDialogTest, AListThatCannotBeReadHasNoSummary) {
    SetupDialog dialog = opened();
    dialog.controls().txtChannels = "0:";
    EXPECT_THAT(dialog.meaning().summary, IsEmpty());
}

TEST(ConfigurationFor, DoesNotMultiplyWhatNoTrialCanHold) {
    AcqSettings wild; // as a damaged file may have them
    wild.sampling.Rate = std::numeric_limits<std::int32_t>::max();
    wild.sampling.Duration = 4'000'000;
    wild.sampling.Repeat = std::numeric_limits<std::int16_t>::max();
    EXPECT_EQ(configurationFor(wild, {}).totalScans, samplesPerTrial(wild.sampling));
}

TEST(SizeText, CountsInThousands) {
    EXPECT_EQ(sizeText(0), "0 bytes");
    EXPECT_EQ(sizeText(999), "999 bytes");
    EXPECT_EQ(sizeText(1000), "1.0 kB");
    EXPECT_EQ(sizeText(999'949), "999.9 kB");
    EXPECT_EQ(sizeText(999'951), "1.0 MB");
    EXPECT_EQ(sizeText(1.5e9), "1.5 GB");
    EXPECT_EQ(sizeText(2e15), "2000.0 TB");
}

TEST(RangeOf, GivesTheRangeOfAFieldByItsName) {
    EXPECT_EQ(rangeOf("Rate").lowest, 1);
    EXPECT_EQ(rangeOf("Rate").highest, 100000);
    EXPECT_EQ(rangeOf("Nothing").highest, 0);
}

} // namespace
} // namespace tavex2::test
