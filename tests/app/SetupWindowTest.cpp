#include "acquisition/Sound.h"
#include "app/SetupWindowFixture.h"
#include "support/RecordingFile.h"

#include <QClipboard>
#include <QGroupBox>
#include <QScrollBar>

namespace tavex2::test {
namespace {

using testing::HasSubstr;

TEST_F(SetupWindowTest, HasItsCaptionsFormatsLimitsAndTips) {
    start();
    inDialog([](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Stimulus and Sampling Properities"));
        const std::vector<std::pair<const char*, const char*>> frames{
            {"fraSampling", "Sampling"}, {"fraTriggering", "Trigger Conditions"},
            {"fraStimulus", "Stimulus"}, {"fraSound", "Sound"},
            {"fraOptions", "Options"},   {"fraFile", "&File"},
            {"fraDevice", "A/D Device"}};
        for (const auto& [name, title] : frames)
            EXPECT_EQ(in<QGroupBox>(dialog, name).title(), QLatin1String(title));

        const std::vector<std::pair<const char*, const char*>> buttons{
            {"optTrigger_0", "&Immediate start"},
            {"optTrigger_1", "&Use trigger channel"},
            {"optTriggerSlope_0", "+ve slope"},
            {"optTriggerSlope_1", "--ve slope"},
            {"cbDIO_0", "DIO &0"},
            {"cbDIO_1", "DIO &1"},
            {"cbDIO_2", "DIO &2"},
            {"cbSound_0", "&Sound before"},
            {"cbSound_1", "&Sound after"},
            {"chkOffsets", "&Save chan. offsets"},
            {"chkPauseToReset", "&Pause to Reset"},
            {"chkComments", "&Add comments to each trial"},
            {"chkRandom", "&Allow random sound after trigger"},
            {"chkAutosave", "&Autosave"},
            {"optSaveType_0", "Binary format (.lmb)"},
            {"optSaveType_1", "Tab-delimited ASCII (.tab)"}};
        for (const auto& [name, caption] : buttons)
            EXPECT_EQ(in<QAbstractButton>(dialog, name).text(), QLatin1String(caption));

        struct Box {
            const char* name;
            const char* label;
            const char* shown;
            double lowest;
            double highest;
            const char* tip;
        };
        const std::vector<Box> boxes{
            {"cwnRate", "&Rate:", "1000 Hz", 1, 100000,
             "Enter sampling rate per channel. Range 1 Hz to 100 kHz. Note, 100 kHz can only ber used to sample a "
             "single "
             "channel."},
            {"cwnDuration", "&Duration:", ".05 s", 0.01, 3600, "Enter sample duration in seconds."},
            {"cwnUpper", "&Upper:", "10.0 V", -10, 10, "Enter maximum expected voltage."},
            {"cwnLower", "&Lower:", "-10.0 V", -10, 10, "Enter minimum expected voltage."},
            {"cwnRepeat", "R&epeat:", "1 x", 1, 500, "Enter number of times to repeat sampling."},
            {"cwnStartDelay", "&Start delay (s):", "0 s", 0, 30, "Enter the amount of delay before triggering starts."},
            {"CWNumTriggerChannel", "&Channel:", "00", 0, 63,
             "Select channel to trigger on. Note, it must be one of the data channels."},
            {"CWNumTriggerLevel", "&Level:", "1.0 V", -9.8, 9.8, "Enter trigger level in volts (range +/- 9 V)."},
            {"CWNumPretrigger", "&Pretrigger %:", "10 %", 0, 95,
             "Select percentage of sample duration to keep before the trigger."},
            {"cwnLatency_0", "Delay:", "5 ms", 0, 120000, nullptr},
            {"cwnSoundFreq", "Fre&quency:", "0 Hz", 5, 10000, nullptr},
            {"cwnSoundDuration", "Dur&ation:", "0 s", 0.02, 30, nullptr},
            {"CWNumTrial", "&Number:", "0", 0, 9999, nullptr}};
        for (const Box& expected : boxes) {
            const CWNumEdit& shown = box(dialog, expected.name);
            EXPECT_EQ(shown.text(), QLatin1String(expected.shown)) << expected.name;
            EXPECT_EQ(shown.minimum(), expected.lowest) << expected.name;
            EXPECT_EQ(shown.maximum(), expected.highest) << expected.name;
            if (expected.tip != nullptr) {
                EXPECT_EQ(shown.toolTip(), QLatin1String(expected.tip));
            }
            bool labelled = false;
            for (const QLabel* label : dialog.findChildren<QLabel*>())
                if (label->buddy() == &shown) labelled = label->text() == QLatin1String(expected.label);
            EXPECT_TRUE(labelled) << expected.name;
        }
        EXPECT_EQ(
            in<QWidget>(dialog, "txtChannels").toolTip(),
            QStringLiteral("Enter channel string here. Use : to indicate a range, i.e., 2 to 5 = 2:5. Use commas to "
                           "separate channels. "));
        EXPECT_EQ(in<QWidget>(dialog, "txtFilename").toolTip(),
                  QStringLiteral("Enter a prefix to add to the filenames."));
        EXPECT_EQ(in<QWidget>(dialog, "optTrigger_0").toolTip(),
                  QStringLiteral("Select if you want to start collection immediately, including any delay."));
        EXPECT_EQ(in<QWidget>(dialog, "optTrigger_1").toolTip(),
                  QStringLiteral("Select if you want to trigger on a data channel."));
        EXPECT_EQ(in<QWidget>(dialog, "optTriggerSlope_0").toolTip(), QStringLiteral("Trigger on a rising slope."));
        EXPECT_EQ(in<QWidget>(dialog, "optTriggerSlope_1").toolTip(), QStringLiteral("Change on a falling slope."));
        EXPECT_EQ(in<QWidget>(dialog, "chkOffsets").toolTip(),
                  QStringLiteral("Check this box to record and save each channel's offset before data collection "
                                 "starts."));
        EXPECT_EQ(box(dialog, "cwnDevice").maximum(), 10);
        EXPECT_EQ(deviceName(dialog), QStringLiteral("Simulated board"));
        click(dialog, "cmdCancel");
    });
}

TEST_F(SetupWindowTest, EveryFieldGoesThroughTheDialogAndAFileAndBack) {
    start();
    inDialog([](QWidget& dialog) {
        in<QLineEdit>(dialog, "txtChannels").setText(QStringLiteral("0,2:3"));
        type(dialog, "cwnRate", "2000");
        type(dialog, "cwnDuration", "0.25 s");
        type(dialog, "cwnUpper", "5");
        type(dialog, "cwnLower", "-2,5");
        type(dialog, "cwnRepeat", "3");
        type(dialog, "cwnStartDelay", "12");
        click(dialog, "optTrigger_1");
        type(dialog, "CWNumTriggerChannel", "2");
        type(dialog, "CWNumTriggerLevel", "-1.5");
        type(dialog, "CWNumPretrigger", "20");
        click(dialog, "optTriggerSlope_1");
        click(dialog, "cbDIO_1");
        type(dialog, "cwnLatency_1", "250");
        for (const char* name : {"chkOffsets", "chkPauseToReset", "chkComments", "chkRandom", "chkAutosave"})
            click(dialog, name);
        click(dialog, "optSaveType_1");
        in<QLineEdit>(dialog, "txtFilename").setText(QStringLiteral("Arm"));
        type(dialog, "CWNumTrial", "77");
        click(dialog, "cmdOK");
    });
    const AcqSettings settings = saved();
    EXPECT_EQ(settings.sampling.Channels.trimmed(), "0,2:3");
    EXPECT_EQ(settings.sampling.Rate, 2000);
    EXPECT_EQ(settings.sampling.Duration, 0.25F);
    EXPECT_EQ(settings.sampling.UpperVolts, 5);
    EXPECT_EQ(settings.sampling.LowerVolts, -2.5F);
    EXPECT_EQ(settings.sampling.Repeat, 3);
    EXPECT_EQ(settings.setup.StartDelay, 12);
    EXPECT_EQ(settings.setup.TriggerMode, 1);
    EXPECT_EQ(settings.trigger.TriggerChannel, "2");
    EXPECT_EQ(settings.trigger.TriggerLevel, -1.5F);
    EXPECT_EQ(settings.trigger.Pretrigger, 20);
    EXPECT_FALSE(settings.trigger.TriggerRising);
    EXPECT_EQ(settings.sampling.DIOMask, 0b010);
    EXPECT_EQ(settings.sampling.DIOLatency[1], 250);
    EXPECT_TRUE(settings.setup.SaveOffsets);
    EXPECT_TRUE(settings.setup.PauseToReset);
    EXPECT_TRUE(settings.setup.Comments);
    EXPECT_TRUE(settings.trigger.RandomSound);
    EXPECT_TRUE(settings.setup.Autosave);
    EXPECT_EQ(settings.setup.SaveType, 1);
    EXPECT_EQ(settings.setup.FilePrefix, "Arm");
    EXPECT_EQ(settings.setup.TrialNumber, 77);

    inDialog([](QWidget& dialog) {
        EXPECT_EQ(in<QLineEdit>(dialog, "txtChannels").text(), QStringLiteral("0,2:3"));
        EXPECT_EQ(box(dialog, "cwnDuration").value(), 0.25);
        EXPECT_EQ(box(dialog, "cwnDuration").text(), QStringLiteral(".25 s"));
        EXPECT_TRUE(in<QAbstractButton>(dialog, "optTrigger_1").isChecked());
        EXPECT_TRUE(in<QAbstractButton>(dialog, "cbDIO_1").isChecked());
        EXPECT_FALSE(in<QAbstractButton>(dialog, "chkRandom").isChecked());
        click(dialog, "cmdCancel");
    });
}

TEST_F(SetupWindowTest, TheNextCollectionFollowsTheDialog) {
    start();
    inDialog([](QWidget& dialog) {
        in<QLineEdit>(dialog, "txtChannels").setText(QStringLiteral("0:2"));
        in<QLineEdit>(dialog, "txtFilename").setText(QStringLiteral("Leg"));
        type(dialog, "CWNumTrial", "7");
        click(dialog, "cmdOK");
    });
    collect();
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Leg0008 (Unsaved)"));
    EXPECT_EQ(plots("cwG"), 3);
}

TEST_F(SetupWindowTest, ATriggerThatIsConfirmedIsWaitedForAndOneThatIsNotIsIgnored) {
    start();
    inDialog([](QWidget& dialog) {
        click(dialog, "optTrigger_1");
        click(dialog, "cmdCancel");
    });
    collect();
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Trial0001 (Unsaved)")) << "an immediate start";
    inDialog([](QWidget& dialog) {
        EXPECT_TRUE(in<QAbstractButton>(dialog, "optTrigger_1").isChecked()) << "the click is kept";
        type(dialog, "CWNumTriggerLevel", "9.8");
        click(dialog, "cmdOK");
    });
    button("Collect").click();
    EXPECT_EQ(status(), QStringLiteral("Waiting for trigger before acquiring data"));
    WhenDialogOpens question("MessageBox", [](QWidget& box) { press(box, QMessageBox::Yes); });
    button("Stop").click();
    EXPECT_TRUE(question.opened());
}

TEST_F(SetupWindowTest, CancelAndEscapeStoreNothing) {
    start();
    const AcqSettings before = saved();
    for (const bool escape : {false, true})
        inDialog([escape](QWidget& dialog) {
            type(dialog, "cwnRate", "5");
            type(dialog, "cwnDevice", "4");
            EXPECT_EQ(deviceName(dialog), QStringLiteral("none"));
            escape ? QTest::keyClick(&dialog, Qt::Key_Escape) : click(dialog, "cmdCancel");
        });
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(child<QLabel>("StatusPanel2").text(), QStringLiteral("Device: Simulated board"));
}

TEST_F(SetupWindowTest, WhatIsOffIsDisabled) {
    start();
    inDialog([](QWidget& dialog) {
        EXPECT_FALSE(in<QWidget>(dialog, "fraTriggering").isEnabled());
        click(dialog, "optTrigger_1");
        EXPECT_TRUE(in<QWidget>(dialog, "fraTriggering").isEnabled());
        EXPECT_FALSE(box(dialog, "cwnLatency_2").isEnabled());
        click(dialog, "cbDIO_2");
        EXPECT_TRUE(box(dialog, "cwnLatency_2").isEnabled());
        EXPECT_FALSE(in<QWidget>(dialog, "optSaveType_1").isEnabled());
        click(dialog, "chkAutosave");
        EXPECT_TRUE(in<QWidget>(dialog, "optSaveType_1").isEnabled());
        click(dialog, "cmdCancel");
    });
}

TEST_F(SetupWindowTest, SoundIsOfferedWhereTheMachineHasIt) {
    start();
    inDialog([](QWidget& dialog) {
        EXPECT_FALSE(in<QWidget>(dialog, "fraSound").isEnabled());
        click(dialog, "cmdCancel");
    });
    sound.devices = 1;
    start();
    inDialog([](QWidget& dialog) {
        EXPECT_TRUE(in<QWidget>(dialog, "fraSound").isEnabled());
        EXPECT_EQ(box(dialog, "cwnSoundFreq").text(), QStringLiteral("500 Hz"));
        EXPECT_FALSE(box(dialog, "cwnSoundFreq").isEnabled());
        click(dialog, "cbSound_0");
        EXPECT_TRUE(box(dialog, "cwnSoundFreq").isEnabled());
        type(dialog, "cwnSoundFreq", "750");
        type(dialog, "cwnSoundDuration", "0.1");
        click(dialog, "cmdOK");
    });
    EXPECT_EQ(saved().sound.SoundFreq, 750);
    collect();
    ASSERT_EQ(sound.played.size(), 1U);
    EXPECT_EQ(bytesOf(sound.played.front()).substr(0, 44), toneBytes(750, 0.1).substr(0, 44));
}

TEST_F(SetupWindowTest, OneLineTellsWhatTheSettingsComeTo) {
    start();
    inDialog([](QWidget& dialog) {
        EXPECT_THAT(line(dialog), HasSubstr("51 samples of 2 channels a trial"));
        type(dialog, "cwnRate", "2000");
        EXPECT_THAT(line(dialog), HasSubstr("101 samples"));
        in<QLineEdit>(dialog, "txtChannels").setText(QStringLiteral("0:70"));
        EXPECT_THAT(line(dialog), HasSubstr("<b>")) << "the board has 64 inputs";
        in<QLineEdit>(dialog, "txtChannels").setText(QStringLiteral("0:1"));
        click(dialog, "optTrigger_1");
        type(dialog, "CWNumTriggerChannel", "5");
        EXPECT_THAT(line(dialog), HasSubstr("not among the listed channels"));
        click(dialog, "cbDIO_0");
        type(dialog, "cwnLatency_0", "40000");
        EXPECT_THAT(line(dialog), HasSubstr("32767 ms"));
        click(dialog, "cmdOK");
        EXPECT_TRUE(dialog.isVisible()) << "such a delay cannot be stored";
        type(dialog, "cwnLatency_0", "4000");
        click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible()) << "the rest is only a warning";
    });
}

TEST_F(SetupWindowTest, AChannelListStopsAtFiftyCharactersAndSaysSo) {
    start();
    const QString list = QStringLiteral("0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19");
    inDialog([&](QWidget& dialog) {
        auto& channels = in<QLineEdit>(dialog, "txtChannels");
        QTest::mouseClick(&channels, Qt::LeftButton);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(dialog.focusWidget(), list);
        EXPECT_THAT(plainLine(dialog), testing::Not(HasSubstr("50 characters")));
        QTest::keyClicks(dialog.focusWidget(), QStringLiteral(",20"));
        EXPECT_EQ(channels.text(), list + QLatin1Char(','));
        EXPECT_THAT(plainLine(dialog), HasSubstr("Channels: the list holds 50 characters, and no more was taken."));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Backspace);
        EXPECT_THAT(plainLine(dialog), testing::Not(HasSubstr("50 characters")));
        QApplication::clipboard()->setText(list + QStringLiteral(",20,21"));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_V, Qt::ControlModifier);
        EXPECT_THAT(plainLine(dialog), HasSubstr("no more was taken")) << "a part of what was pasted";
        click(dialog, "cmdCancel");
    });
}

TEST_F(SetupWindowTest, TheDataFolderIsNamedAndCanBeChosen) {
    start();
    const TemporaryFolder other;
    const auto text = [](const std::filesystem::path& path) { return QString::fromStdString(path.string()); };
    inDialog([&](QWidget& dialog) {
        EXPECT_EQ(in<QLineEdit>(dialog, "txtFolder").text(), text(folder.path()));
        EXPECT_TRUE(in<QWidget>(dialog, "txtFolder").toolTip().contains(text(folder.path()))) << "however long it is";
        in<QLineEdit>(dialog, "txtFolder").setText(text(folder / "none"));
        EXPECT_THAT(plainLine(dialog), HasSubstr("none is no folder. Create it or choose another one."));
        pressOK(dialog);
        ASSERT_TRUE(dialog.isVisible());
        const WhenDialogOpens browser("CommonDialog",
                                      [&](QWidget& shown) { enterFileName(shown, text(other.path())); });
        QTest::mouseClick(&in<QWidget>(dialog, "cmdBrowse"), Qt::LeftButton);
        ASSERT_TRUE(browser.opened());
        EXPECT_EQ(in<QLineEdit>(dialog, "txtFolder").text(), text(other.path()));
        pressOK(dialog);
        EXPECT_FALSE(dialog.isVisible());
    });
    collect();
    WhenDialogOpens saving("CommonDialog", [&](QWidget& shown) {
        EXPECT_EQ(dynamic_cast<QFileDialog&>(shown).directory().absolutePath(), text(other.path()));
        shown.close();
    });
    action("mnuSave").trigger();
    EXPECT_TRUE(saving.opened());
}

TEST_F(SetupWindowTest, ALongNameOfABoardIsShownWhole) {
    const std::string longName(40, 'w');
    const auto recording = folder / (longName + ".wav");
    writeWave(recording, 1, 1000, std::vector<std::int16_t>(1000));
    start({"Duration=0.05", "DIOMask=0", "Channels=0"}, "recording:" + recording.string());
    inDialog([&](QWidget& dialog) {
        auto& name = in<QPlainTextEdit>(dialog, "txtDevice");
        EXPECT_THAT(name.toPlainText().toStdString(), HasSubstr(longName));
        EXPECT_EQ(name.horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(name.verticalScrollBar()->maximum(), 0) << "all of its lines have room";
        EXPECT_THAT(name.toolTip().toStdString(), HasSubstr(longName)) << "where a name may be still longer";
        click(dialog, "cmdCancel");
    });
}

TEST_F(SetupWindowTest, WarningsNameABoxAsItsLabelDoes) {
    start();
    const std::vector<std::pair<const char*, std::function<void(AcqSettings&)>>> cases{
        {"cwnRate", [](auto& s) { s.sampling.Rate = 0; }},
        {"cwnDuration", [](auto& s) { s.sampling.Duration = 0; }},
        {"cwnUpper", [](auto& s) { s.sampling.UpperVolts = 99; }},
        {"cwnLower", [](auto& s) { s.sampling.LowerVolts = 99; }},
        {"cwnRepeat", [](auto& s) { s.sampling.Repeat = 0; }},
        {"cwnStartDelay", [](auto& s) { s.setup.StartDelay = 99; }},
        {"cwnLatency_0", [](auto& s) { s.sampling.DIOLatency[0] = -1; }},
        {"CWNumTriggerLevel", [](auto& s) { s.trigger.TriggerLevel = 99; }},
        {"CWNumPretrigger", [](auto& s) { s.trigger.Pretrigger = 99; }},
        {"txtFilename", [](auto& s) { s.setup.FilePrefix = "a/b"; }},
        {"txtChannels", [](auto& s) { s.sampling.Channels.assign("0\t"); }}};
    for (const auto& [name, spoil] : cases) {
        AcqSettings stored;
        stored.setup.TriggerMode = 1;
        spoil(stored);
        const WhenDialogOpens setup("frmProperties", [box = name](QWidget& dialog) {
            QString label;
            for (const QLabel* each : dialog.findChildren<QLabel*>())
                if (each->buddy() == &in<QWidget>(dialog, box)) label = each->text().remove(QLatin1Char('&'));
            EXPECT_THAT(plainLine(dialog), testing::HasSubstr(label.toStdString() + " ")) << box;
            click(dialog, "cmdCancel");
        });
        load(write("Spoilt.set", encodeSetup(stored)));
        EXPECT_TRUE(setup.opened());
    }
}

TEST_F(SetupWindowTest, WaitsForACollectionAndEndsARealTimeView) {
    start({"Duration=3000", "DIOMask=0"});
    button("Collect").click();
    action("mnuEdit_1").trigger(); // no dialog opens, or this would wait for it
    EXPECT_TRUE(status().contains(QLatin1String("A trial is being collected."))) << status().toStdString();
    action("mnuOption_5").trigger();
    EXPECT_TRUE(status().contains(QLatin1String("A trial is being collected."))) << status().toStdString();
    WhenDialogOpens question("MessageBox", [](QWidget& box) { press(box, QMessageBox::Yes); });
    button("Stop").click();
    ASSERT_TRUE(question.opened());
    button("Realtime").click();
    inDialog([](QWidget& dialog) { click(dialog, "cmdCancel"); }, "tbConfigure");
    EXPECT_FALSE(button("Stop").isEnabled());
}

// Options menu and setup files ----------------------------------------------------------------------------------------

TEST_F(SetupWindowTest, AfterOKTheCheckMarksAreOneOff) {
    start();
    inDialog([](QWidget& dialog) {
        click(dialog, "chkPauseToReset");
        click(dialog, "chkAutosave");
        click(dialog, "cmdOK");
    });
    EXPECT_TRUE(action("mnuOption_0").isChecked());
    EXPECT_FALSE(action("mnuOption_2").isChecked()) << "SaveOffsets";
    EXPECT_TRUE(action("mnuOption_3").isChecked()) << "PauseToReset";
    EXPECT_FALSE(action("mnuOption_4").isChecked());
    action("mnuOption_3").trigger();
    EXPECT_TRUE(window().isMaximized());
    EXPECT_TRUE(action("mnuOption_3").isChecked()) << "its own field again";
    action("mnuOption_3").trigger();
    EXPECT_FALSE(window().isMaximized());
    EXPECT_FALSE(action("mnuOption_3").isChecked());
}

TEST_F(SetupWindowTest, LoadingASetupShowsItInTheDialogAndRelabelsTheGraphs) {
    start();
    AcqSettings stored;
    stored.sampling.Rate = 750;
    stored.setup.DisplayInVolts = false;
    stored.setup.DisplayInSeconds = false;
    const auto file = write("Protocol.set", encodeSetup(stored));
    WhenDialogOpens setup("frmProperties", [](QWidget& dialog) {
        EXPECT_EQ(box(dialog, "cwnRate").value(), 750);
        click(dialog, "cmdOK");
    });
    load(file);
    ASSERT_TRUE(setup.opened());
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Protocol"));
    EXPECT_EQ(child<QWidget>("cwG").property("yCaption"), QStringLiteral("Voltage (millivolts)"));
    EXPECT_EQ(child<QWidget>("cwG").property("xCaption"), QStringLiteral("Current Trial (milliseconds)"));
    EXPECT_EQ(saved().sampling.Rate, 750);
}

TEST_F(SetupWindowTest, AForeignFileIsRefusedWithItsMessage) {
    start();
    WhenDialogOpens version("MessageBox", [](QWidget& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Setup File Version Invalid"));
        press(box, QMessageBox::Ok);
    });
    load(write("Foreign.set", std::string(500, 'x')));
    EXPECT_TRUE(version.opened());
    WhenDialogOpens cut("MessageBox", [](QWidget& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Error Reading Options"));
        press(box, QMessageBox::Ok);
    });
    load(write("Short.set", encodeSetup(AcqSettings{}).substr(0, 100)));
    EXPECT_TRUE(cut.opened());
}

TEST_F(SetupWindowTest, WildValuesOfAFileAreShownAndACollectionWithThemIsRefused) {
    start();
    AcqSettings wild;
    wild.sampling.Duration = -7;
    wild.sampling.Repeat = 32000;
    wild.setup.Device = 1;
    wild.setup.DisplayPreset = 99;
    wild.setup.TriggerMode = -4;
    const auto file = write("Wild.set", encodeSetup(wild));
    WhenDialogOpens setup("frmProperties", [](QWidget& dialog) {
        EXPECT_THAT(line(dialog), HasSubstr("Duration: must be"));
        click(dialog, "cmdOK");
    });
    load(file);
    ASSERT_TRUE(setup.opened());
    WhenDialogOpens refusal("MessageBox", [](QWidget& box) {
        EXPECT_THAT(dynamic_cast<QMessageBox&>(box).text().toStdString(), HasSubstr("Duration: must be"));
        press(box, QMessageBox::Ok);
    });
    button("Collect").click();
    EXPECT_TRUE(refusal.opened());
}

TEST_F(SetupWindowTest, ASetupFileOfTheCommandLineOpensWithTheWindow) {
    AcqSettings stored;
    stored.sampling.Rate = 321;
    const auto file = write("Bench.set", encodeSetup(stored));
    WhenDialogOpens setup("frmProperties", [](QWidget& dialog) {
        EXPECT_EQ(box(dialog, "cwnRate").value(), 321);
        click(dialog, "cmdOK");
    });
    startWith({.board = "simulator", .files = {file}});
    ASSERT_TRUE(waitFor([&] { return setup.opened(); }));
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Bench"));
}

} // namespace
} // namespace tavex2::test
