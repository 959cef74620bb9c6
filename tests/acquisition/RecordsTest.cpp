#include "acquisition/AcqFields.h"
#include "acquisition/StartCondition.h"
#include "acquisition/records/ProgramState.h"
#include "support/Fakes.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <string>
#include <string_view>

namespace tavex2::test {
namespace {

using testing::HasSubstr;

SamplingSettings sampling(float duration, int rate) {
    SamplingSettings result;
    result.Duration = duration;
    result.Rate = rate;
    return result;
}

TEST(AcqSettingsTest, StartsWithTheDefaults) {
    const AcqSettings settings;
    EXPECT_EQ(settings.setup.Version, 1);
    EXPECT_FALSE(settings.setup.Autosave);
    EXPECT_TRUE(settings.setup.DisplayAutoScale);
    EXPECT_TRUE(settings.setup.DisplayInVolts);
    EXPECT_TRUE(settings.setup.DisplayInSeconds);
    EXPECT_EQ(settings.setup.Device, 1);
    EXPECT_EQ(settings.setup.TrialNumber, 0);
    EXPECT_EQ(settings.setup.FilePrefix, "Trial");
    EXPECT_EQ(settings.sampling.DIOMask, 1);
    EXPECT_THAT(settings.sampling.DIOLatency, testing::Each(5));
    EXPECT_THAT(settings.sampling.DIOState, testing::Each(1));
    EXPECT_EQ(settings.sampling.Channels.trimmed(), "0:1");
    EXPECT_EQ(settings.sampling.Rate, 1000);
    EXPECT_EQ(settings.sampling.Duration, 2.0F);
    EXPECT_EQ(settings.sampling.UpperVolts, 10.0F);
    EXPECT_EQ(settings.sampling.LowerVolts, -10.0F);
    EXPECT_EQ(settings.sampling.Repeat, 1);
    EXPECT_EQ(settings.trigger.TriggerLevel, 1.0F);
    EXPECT_TRUE(settings.trigger.TriggerRising);
    EXPECT_EQ(settings.trigger.Pretrigger, 10);
    EXPECT_EQ(settings.trigger.TriggerChannel, "0");
    EXPECT_EQ(settings.trigger.RandomRatio, 0);
    EXPECT_EQ(settings.sound.SoundFreq, 0.0);
}

TEST(AcqSettingsTest, ATrialHoldsTheSampleAtTimeZeroAndTheOneAtItsEnd) {
    EXPECT_EQ(samplesPerTrial(sampling(2.0F, 1000)), 2001);
    EXPECT_EQ(samplesPerTrial(sampling(3600.0F, 100000)), 360000001);
    EXPECT_EQ(samplesPerTrial(sampling(0.01F, 1)), 1);
    // float32(0.1) is a little above 0.1, and the product rounds to the nearest whole number.
    EXPECT_EQ(samplesPerTrial(sampling(0.1F, 1000)), 101);
    // 0.5 x 1 and 1.5 x 1 lie halfway and go to the even neighbour.
    EXPECT_EQ(samplesPerTrial(sampling(0.5F, 1)), 1);
    EXPECT_EQ(samplesPerTrial(sampling(1.5F, 1)), 3);
}

TEST(AcqSettingsTest, AValueThatNoTrialCanHaveGivesNoSamples) {
    EXPECT_EQ(samplesPerTrial(sampling(-2.0F, 1000)), 0);
    EXPECT_EQ(samplesPerTrial(sampling(std::numeric_limits<float>::quiet_NaN(), 1000)), 0);
    EXPECT_EQ(samplesPerTrial(sampling(std::numeric_limits<float>::infinity(), 1000)), 0);
    EXPECT_EQ(samplesPerTrial(sampling(3e38F, 1000)), 0);
}

TEST(AcqSettingsTest, TenPercentOfTwoSecondsAtOneKilohertzAre200PreTriggerScans) {
    TriggerSettings trigger;
    EXPECT_EQ(preTriggerScans(sampling(2.0F, 1000), trigger), 200);
    trigger.Pretrigger = 0;
    EXPECT_EQ(preTriggerScans(sampling(2.0F, 1000), trigger), 0);
    trigger.Pretrigger = -5;
    EXPECT_EQ(preTriggerScans(sampling(2.0F, 1000), trigger), 0);
}

TEST(SettingsCompatibleTest, ComparesDurationChannelsSamplesAndRateOnly) {
    const SamplingSettings a;
    SamplingSettings b = a;
    b.Channels.assign("4,7");
    b.UpperVolts = 1.0F;
    b.DIOMask = 0;
    b.Repeat = 9;
    EXPECT_TRUE(SettingsCompatible(a, b));
    for (const auto& change : std::vector<std::function<void(SamplingSettings&)>>{
             [](SamplingSettings& s) { s.Duration = std::nextafterf(s.Duration, 3.0F); },
             [](SamplingSettings& s) { ++s.NumChannels; }, [](SamplingSettings& s) { ++s.NumSamples; },
             [](SamplingSettings& s) { ++s.Rate; }}) {
        SamplingSettings c = a;
        change(c);
        EXPECT_FALSE(SettingsCompatible(a, c));
    }
}

/// A trial of this shape whose sample (c, i) is `base` + 100 c + i.
Trial ramp(int channels, std::int64_t samples, double base, const std::string& name = "Trial0001") {
    Trial trial;
    trial.name = name;
    trial.samples = FakeAnalogInput::block(channels, samples, base);
    return trial;
}

TEST(AverageTest, IsTheMeanOfCompatibleTrialsAndRestartsWithAnother) {
    TrialAverage average;
    EXPECT_TRUE(average.empty());
    ASSERT_TRUE(AddTrialToAverage(average, ramp(2, 3, 1.0)));
    ASSERT_TRUE(AddTrialToAverage(average, ramp(2, 3, 4.0)));
    EXPECT_EQ(average.AverageCount, 2);
    EXPECT_EQ(average.AverageSum->at(1, 2), 5.0 + 2 * 102.0);

    Trial slower = ramp(2, 3, 9.0);
    slower.sampling.Rate = 500;
    ASSERT_TRUE(AddTrialToAverage(average, slower));
    EXPECT_EQ(average.AverageCount, 1);
    EXPECT_EQ(average.AverageSettings.Rate, 500);
    EXPECT_EQ(average.AverageSum->at(0, 0), 9.0);

    ClearAverage(average);
    EXPECT_EQ(average.AverageCount, 0);
    EXPECT_FALSE(average.AverageSum);
    EXPECT_TRUE(average.empty());
}

TEST(AverageTest, KnowsTheTrialThatItBeganWith) {
    TrialAverage average;
    EXPECT_EQ(average.first, "");
    ASSERT_TRUE(AddTrialToAverage(average, ramp(2, 3, 1.0, "Trial0003")));
    ASSERT_TRUE(AddTrialToAverage(average, ramp(2, 3, 1.0, "Trial0004")));
    EXPECT_EQ(average.first, "Trial0003");
    ASSERT_TRUE(AddTrialToAverage(average, ramp(2, 4, 1.0, "Trial0005")));
    EXPECT_EQ(average.first, "Trial0005") << "another shape begins anew";
    ClearAverage(average);
    EXPECT_EQ(average.first, "");
}

TEST(AverageTest, LimitsAndTriggerMayDifferBetweenItsTrials) {
    TrialAverage average;
    Trial trial = ramp(1, 3, 1.0);
    ASSERT_TRUE(AddTrialToAverage(average, trial));
    trial.sampling.UpperVolts = 5;
    trial.sampling.LowerVolts = -5;
    ASSERT_TRUE(AddTrialToAverage(average, trial));
    EXPECT_EQ(average.AverageCount, 2);
    EXPECT_EQ(average.AverageSum->rank(), 1);
}

TEST(AverageTest, TrialsOfAnotherShapeNeverMixWhateverTheSettingsSay) {
    TrialAverage average;
    ASSERT_TRUE(AddTrialToAverage(average, ramp(2, 3, 1.0)));
    ASSERT_TRUE(AddTrialToAverage(average, ramp(2, 4, 1.0)));
    EXPECT_EQ(average.AverageCount, 1);
    EXPECT_EQ(average.AverageSum->samples(), 4);
}

TEST(AverageTest, ACountBeyond16BitsIsAnErrorThatChangesNothing) {
    TrialAverage average;
    ASSERT_TRUE(AddTrialToAverage(average, ramp(1, 2, 1.0, "Trial0001")));
    average.AverageCount = std::numeric_limits<std::int16_t>::max();
    const TrialData sum = average.AverageSum;
    const Result<void> result = AddTrialToAverage(average, ramp(1, 2, 1.0, "Trial0002"));
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().text, HasSubstr("32767"));
    EXPECT_EQ(average.AverageCount, 32767);
    EXPECT_EQ(average.AverageSum, sum);
    EXPECT_EQ(average.first, "Trial0001");
}

// The current trial ---------------------------------------------------------------------------------------------------

TEST(ProgramStateTest, ChangingTheCurrentTrialMakesANewOneOverTheSameSamples) {
    ProgramState state;
    state.trials.CurrentTrial = std::make_shared<const Trial>(ramp(1, 2, 1.0));
    const TrialPtr before = state.trials.CurrentTrial;
    state.changeCurrent([](Trial& trial) { trial.name = "Arm"; });
    EXPECT_EQ(before->name, "Trial0001") << "whoever keeps it has it as it was";
    EXPECT_EQ(state.trials.CurrentTrial->name, "Arm");
    EXPECT_EQ(state.trials.CurrentTrial->samples, before->samples);
    EXPECT_FALSE(state.trials.LastTrial);
}

TEST(ProgramStateTest, ATrialThatIsCurrentAndLastChangesAsBoth) {
    ProgramState state;
    state.trials.CurrentTrial = state.trials.LastTrial = std::make_shared<const Trial>(ramp(1, 2, 1.0));
    state.rename("Arm");
    EXPECT_EQ(state.trials.LastTrial->name, "Arm");
    EXPECT_EQ(state.trials.LastTrial, state.trials.CurrentTrial);

    state.trials.CurrentTrial = std::make_shared<const Trial>(ramp(1, 2, 2.0, "Trial0002"));
    state.rename("Leg");
    EXPECT_EQ(state.TrialName(), "Leg");
    EXPECT_EQ(state.trials.LastTrial->name, "Arm");
}

TEST(ProgramStateTest, ANameGivenBeforeTheFirstTrialStandsUntilThereIsOne) {
    ProgramState state;
    EXPECT_EQ(state.TrialName(), "");
    state.rename("Protocol");
    EXPECT_EQ(state.TrialName(), "Protocol");
    EXPECT_FALSE(state.DataPresent());
    EXPECT_FALSE(state.TrialNotSaved());
    state.trials.CurrentTrial = std::make_shared<const Trial>(ramp(1, 2, 1.0));
    EXPECT_EQ(state.TrialName(), "Trial0001");
    EXPECT_TRUE(hasCurrentTrial(state));
    state.trials.CurrentTrial = std::make_shared<const Trial>();
    EXPECT_TRUE(state.DataPresent());
    EXPECT_FALSE(hasCurrentTrial(state)) << "a collection in debug mode";
}

TEST(StartConditionTest, CarriesLevelSecondThresholdChannelSlopeAndPreTrigger) {
    AcqSettings settings;
    settings.trigger.TriggerLevel = 2.0F;
    settings.trigger.TriggerChannel = "1";
    settings.trigger.TriggerRising = false;
    const StartCondition start = startConditionFor(settings, true);
    EXPECT_EQ(start.type, StartCondition::Type::AnalogLevel);
    EXPECT_EQ(start.levelVolts, 2.0);
    EXPECT_EQ(start.secondThresholdVolts, 1.8);
    EXPECT_EQ(start.channel, "1");
    EXPECT_FALSE(start.rising);
    EXPECT_EQ(start.preTriggerScans, 200);
    EXPECT_EQ(startConditionFor(settings, false).type, StartCondition::Type::None);
}

// Setting fields by name ----------------------------------------------------------------------------------------------

std::string refusal(const char* name, const char* text) {
    AcqSettings settings;
    const AcqSettings before = settings;
    const Result<void> result = setField(settings, name, text);
    EXPECT_TRUE(settings == before) << "a refused value must change nothing";
    return result ? "accepted" : result.error().text;
}

TEST(AcqFieldsTest, SetsFieldsOfEveryType) {
    AcqSettings settings;
    ASSERT_TRUE(setField(settings, "Rate", " 20000 "));
    ASSERT_TRUE(setField(settings, "Duration", "0.01"));
    ASSERT_TRUE(setField(settings, "TriggerLevel", "-9.8"));
    ASSERT_TRUE(setField(settings, "Autosave", "true"));
    ASSERT_TRUE(setField(settings, "TriggerRising", "0"));
    ASSERT_TRUE(setField(settings, "Channels", " 0:11 "));
    ASSERT_TRUE(setField(settings, "FilePrefix", "Subject 1 "));
    ASSERT_TRUE(setField(settings, "TriggerChannel", "07"));
    ASSERT_TRUE(setField(settings, "DIOLatency", "1,2000"));
    ASSERT_TRUE(setField(settings, "SoundFreq", "440.5"));
    ASSERT_TRUE(setField(settings, "DIOMask", "7"));
    EXPECT_EQ(settings.sampling.Rate, 20000);
    EXPECT_EQ(settings.sampling.Duration, 0.01F);
    EXPECT_EQ(settings.trigger.TriggerLevel, -9.8F);
    EXPECT_TRUE(settings.setup.Autosave);
    EXPECT_FALSE(settings.trigger.TriggerRising);
    EXPECT_EQ(settings.sampling.Channels.trimmed(), "0:11");
    EXPECT_EQ(settings.setup.FilePrefix, "Subject 1 ");
    EXPECT_EQ(settings.trigger.TriggerChannel, "7");
    EXPECT_THAT(settings.sampling.DIOLatency, testing::ElementsAre(1, 2000, 5, 5, 5, 5, 5, 5));
    EXPECT_EQ(settings.sound.SoundFreq, 440.5);
    EXPECT_EQ(settings.sampling.DIOMask, 7);
}

TEST(AcqFieldsTest, NamesTheFieldItsRangeAndWhatWasGiven) {
    EXPECT_EQ(refusal("Rate", "0"), "Rate must be a whole number from 1 to 100000 Hz, not \"0\".");
    EXPECT_EQ(refusal("Rate", "12.5"), "Rate must be a whole number from 1 to 100000 Hz, not \"12.5\".");
    EXPECT_EQ(refusal("Duration", "0"), "Duration must be a number from 0.01 to 3600 s, not \"0\".");
    EXPECT_EQ(refusal("Duration", "nan"), "Duration must be a number from 0.01 to 3600 s, not \"nan\".");
    EXPECT_EQ(refusal("Duration", "2 s"), "Duration must be a number from 0.01 to 3600 s, not \"2 s\".");
    EXPECT_EQ(refusal("Repeat", ""), "Repeat must be a whole number from 1 to 500, not \"\".");
    EXPECT_EQ(refusal("Autosave", "maybe"), "Autosave must be True or False, not \"maybe\".");
    EXPECT_EQ(refusal("DIOLatency", "5,32768"), "DIOLatency must be a whole number from 0 to 32767 ms, not \"32768\".");
    EXPECT_THAT(refusal("DIOLatency", "1,2,3,4,5,6,7,8,9"), HasSubstr("at most 8"));
    EXPECT_THAT(refusal("TriggerChannel", "64"), HasSubstr("from 0 to 63"));
}

TEST(AcqFieldsTest, RefusesAChannelListThatWouldBeCut) {
    const std::string list = "63,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20";
    EXPECT_THAT(refusal("Channels", list.c_str()), HasSubstr("would be cut after"));
}

TEST(AcqFieldsTest, RefusesPrefixesThatNoFileNameCanCarry) {
    EXPECT_THAT(refusal("FilePrefix", "a/b"), HasSubstr("file names"));
}

TEST(AcqFieldsTest, RefusesControlCharactersByNameAndShowsThem) {
    AcqSettings settings;
    const auto refused = [&](const char* name, std::string_view text) {
        const Result<void> result = setField(settings, name, text);
        return result ? "accepted" : result.error().text;
    };
    using namespace std::string_view_literals;
    EXPECT_EQ(refused("FilePrefix", "a\0b"sv), "FilePrefix cannot hold control characters, as \"a\\u0000b\" does.");
    EXPECT_THAT(refused("FilePrefix", "a\nb"), HasSubstr("a\\u000ab"));
    EXPECT_THAT(refused("Channels", "0:1\x7f"), HasSubstr("Channels cannot hold control characters"));
    EXPECT_EQ(refused("Rate", "1\0000"sv), "Rate must be a whole number from 1 to 100000 Hz, not \"1\\u00000\".");
    EXPECT_THAT(refused("Ra\0te", "5"), HasSubstr("no setting named"));
}

TEST(AcqFieldsTest, RefusesDerivedAndUnknownFields) {
    EXPECT_THAT(refusal("NumSamples", "5"), HasSubstr("worked out by the program"));
    AcqSettings settings;
    const Result<void> unknown = setField(settings, "Speed", "5");
    ASSERT_FALSE(unknown);
    EXPECT_EQ(unknown.error().kind, ErrorKind::NotFound);
}

TEST(AcqFieldsTest, SettingsFromAFileAreCheckedBeforeTheyAreCollectedWith) {
    const AcqSettings good;
    EXPECT_TRUE(checkCollectable(good, true));
    const auto refused = [&](const auto& change, bool triggerEnabled = false) {
        AcqSettings settings;
        change(settings);
        const auto result = checkCollectable(settings, triggerEnabled);
        return result ? std::string("accepted") : result.error().text;
    };
    EXPECT_THAT(refused([](auto& s) { s.sampling.Duration = -2; }), HasSubstr("Duration must be"));
    EXPECT_THAT(refused([](auto& s) { s.sampling.Duration = std::numeric_limits<float>::quiet_NaN(); }),
                HasSubstr("Duration must be"));
    EXPECT_THAT(refused([](auto& s) { s.sampling.Repeat = -3; }), HasSubstr("Repeat must be"));
    EXPECT_THAT(refused([](auto& s) { s.sampling.Rate = 2000000000; }), HasSubstr("Rate must be"));
    EXPECT_THAT(refused([](auto& s) { s.setup.StartDelay = 30000; }), HasSubstr("StartDelay must be"));
    EXPECT_THAT(refused([](auto& s) { s.sampling.DIOLatency[2] = -1; }), HasSubstr("DIOLatency must be"));
    EXPECT_EQ(refused([](auto& s) { s.trigger.Pretrigger = 200; }), "accepted") << "not triggered";
    EXPECT_THAT(refused([](auto& s) { s.trigger.Pretrigger = 200; }, true), HasSubstr("Pretrigger must be"));
    EXPECT_EQ(refused([](auto& s) { s.setup.TrialNumber = 12344; }), "accepted") << "names above 9999 are allowed";
    EXPECT_EQ(refused([](auto& s) { s.sampling.Duration = 0.01F; }), "accepted") << "the limit itself";
    EXPECT_THAT(refused([](auto& s) { s.setup.FilePrefix = "../Trial"; }), HasSubstr("file names"));
    EXPECT_THAT(refused([](auto& s) { s.setup.FilePrefix = std::string("a\0b", 3); }),
                HasSubstr("FilePrefix cannot hold control characters, as \"a\\u0000b\" does."));
    EXPECT_THAT(refused([](auto& s) { s.sampling.Channels.assign("0:1\t"); }), HasSubstr("Channels cannot hold"));
    EXPECT_EQ(refused([](auto& s) { s.trigger.TriggerChannel = std::string("1\0", 2); }), "accepted")
        << "not triggered";
    EXPECT_THAT(refused([](auto& s) { s.trigger.TriggerChannel = std::string("1\0", 2); }, true),
                HasSubstr("TriggerChannel cannot hold"));
}

TEST(AcqFieldsTest, TellsHugeNumbersInFull) {
    AcqSettings settings;
    settings.sampling.Duration = std::numeric_limits<float>::max();
    EXPECT_EQ(checkCollectable(settings, false).error().text,
              "Duration must be a number from 0.01 to 3600 s, not \"340282349999999991754788743781432688640\".");
    settings.sampling.Duration = 12345.6F;
    EXPECT_THAT(checkCollectable(settings, false).error().text, HasSubstr("not \"12345.6\"."));
}

TEST(AcqFieldsTest, RefusesAStoredListThatWasCutInsideARange) {
    AcqSettings settings;
    const std::string list = "63,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,20:25";
    ASSERT_EQ(list.size(), 50U);
    settings.sampling.Channels.assign(list);
    EXPECT_TRUE(checkCollectable(settings, false)) << "a list may be as long as its field";
    EXPECT_EQ(possiblyCutItem(settings.sampling.Channels), "20:25");

    settings.sampling.Channels.assign("0," + list);
    EXPECT_EQ(checkCollectable(settings, false).error().text,
              "Channels fills its 50 characters and was cut in \"20:\". Enter the list anew, shorter, for example with "
              "ranges such as 0:7.");
    settings.sampling.Channels.assign("1" + list);
    EXPECT_THAT(checkCollectable(settings, false).error().text, HasSubstr("was cut in \"20:2\""));
    settings.sampling.Channels.assign(list.substr(0, 48));
    EXPECT_TRUE(checkCollectable(settings, false)) << "what is wrong with a short list, the board says";
    EXPECT_EQ(possiblyCutItem(settings.sampling.Channels), "");
}

TEST(AcqFieldsTest, ListsTheFieldsInTheOrderOfTheSetupFile) {
    std::vector<std::string_view> names;
    const AcqSettings settings;
    forEachField(settings, [&](std::string_view name, const auto&, const FieldRange&) { names.push_back(name); });
    ASSERT_EQ(names.size(), 38U);
    EXPECT_EQ(names.front(), "Version");
    EXPECT_EQ(names[15], "FilePrefix");
    EXPECT_EQ(names[16], "DIOMask");
    EXPECT_EQ(names[27], "TriggerLevel");
    EXPECT_EQ(names.back(), "SoundAfter");
}

} // namespace
} // namespace tavex2::test
