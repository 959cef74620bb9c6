#include "app/SetupWindowFixture.h"

namespace tavex2::test {
namespace {

using testing::HasSubstr;

/// What the numeric boxes of the setup dialog do with typed text.
class SetupNumbersTest : public SetupWindowTest {};

TEST_F(SetupNumbersTest, ATextInABoxNeverBecomesAnotherNumber) {
    start({"Duration=0.05", "DIOMask=0", "TriggerMode=1"});
    struct Case {
        const char* box;
        const char* text;
        const char* said;
    };
    const std::vector<Case> cases{
        {"cwnRate", "12.7", "Rate: \"12.7\" is no whole number. Allowed: 1 to 100000 Hz, in steps of 1"},
        {"cwnRate", "1.5 s", "Rate: \"1.5 s\" has a unit that this box does not take."},
        {"cwnRate", "500000", "Rate: \"500000\" is too large. Allowed: 1 to 100000 Hz"},
        {"cwnRate", "1,000", "Rate: \"1,000\" can be read in two ways"},
        {"cwnRate", "abc", "Rate: \"abc\" is no number."},
        {"CWNumTriggerLevel", "98.0 V", "Level: \"98.0 V\" is too large. Allowed: -9.8 to 9.8 V"},
        {"cwnDuration", "0.001 s", "Duration: \"0.001 s\" is too small. Allowed: 0.01 to 3600 s"},
        {"cwnStartDelay", "1.5 s", "Start delay (s): \"1.5 s\" is no whole number."},
        {"cwnDevice", "11", "A/D Device: \"11\" is too large. Allowed: 1 to 10"}};
    inDialog([&](QWidget& dialog) {
        const QColor usual = background(dialog, "cwnRate");
        for (const auto& [name, text, said] : cases) {
            const double before = box(dialog, name).value();
            typeOver(dialog, name, text);
            EXPECT_EQ(box(dialog, name).text(), QLatin1String(text)) << "every key stays, to be corrected";
            EXPECT_EQ(box(dialog, name).value(), before) << text;
            EXPECT_NE(background(dialog, name), usual) << text;
            EXPECT_THAT(plainLine(dialog), HasSubstr(said));
            pressKey(dialog, Qt::Key_Up);
            EXPECT_EQ(box(dialog, name).text(), QLatin1String(text)) << "there is nothing to step from";
            pressKey(dialog, Qt::Key_Tab);
            EXPECT_EQ(background(dialog, name), usual);
        }
        click(dialog, "cmdCancel");
    });
}

TEST_F(SetupNumbersTest, OKAndEnterStayAtABoxThatIsMarkedAndSayWhy) {
    start();
    inDialog([](QWidget& dialog) {
        for (const bool byMouse : {true, false}) {
            typeOver(dialog, "cwnDuration", "0.001 s");
            byMouse ? pressOK(dialog) : pressKey(dialog, Qt::Key_Return);
            ASSERT_TRUE(dialog.isVisible());
            EXPECT_EQ(dialog.focusWidget(), &box(dialog, "cwnDuration"));
            EXPECT_EQ(box(dialog, "cwnDuration").text(), QStringLiteral("0.001 s"));
            EXPECT_THAT(plainLine(dialog), HasSubstr("Duration: \"0.001 s\" is too small."));
        }
        QTest::keyClicks(dialog.focusWidget(), QStringLiteral("0.1 s")); // over the text, which is selected
        EXPECT_THAT(plainLine(dialog), testing::Not(HasSubstr("too small")));
        pressOK(dialog);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(saved().sampling.Duration, 0.1F);
}

TEST_F(SetupNumbersTest, LeavingAMarkedBoxBringsTheLastGoodValueBackAndSaysSo) {
    start();
    inDialog([](QWidget& dialog) {
        typeOver(dialog, "cwnRate", "2500");
        typeOver(dialog, "cwnRepeat", "7");
        typeOver(dialog, "cwnRate", "250000");
        EXPECT_EQ(box(dialog, "cwnRate").value(), 2500) << "not the 25000 that it began with";
        pressKey(dialog, Qt::Key_Tab);
        EXPECT_EQ(box(dialog, "cwnRate").text(), QStringLiteral("2500 Hz"));
        EXPECT_THAT(plainLine(dialog), HasSubstr("Rate: \"250000\" was not taken: the value is 2500 Hz again."));
        typeOver(dialog, "cwnRepeat", "");
        pressKey(dialog, Qt::Key_Backspace);
        EXPECT_THAT(plainLine(dialog), HasSubstr("Repeat: The number is missing."));
        pressKey(dialog, Qt::Key_Tab);
        EXPECT_EQ(box(dialog, "cwnRepeat").text(), QStringLiteral("7 x"));
        pressOK(dialog);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(saved().sampling.Rate, 2500);
}

TEST_F(SetupNumbersTest, TheMenuOfABoxIsNoEndOfTheEditing) {
    start();
    inDialog([](QWidget& dialog) {
        typeOver(dialog, "cwnRate", "12.7");
        CWNumEdit& rate = box(dialog, "cwnRate");
        QFocusEvent menuOpens(QEvent::FocusOut, Qt::PopupFocusReason);
        QApplication::sendEvent(&rate, &menuOpens);
        EXPECT_EQ(rate.text(), QStringLiteral("12.7"));
        QFocusEvent anotherWindow(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(&rate, &anotherWindow);
        EXPECT_EQ(rate.text(), QStringLiteral("12.7"));
        EXPECT_TRUE(rate.marked());
        click(dialog, "cmdCancel");
    });
}

TEST_F(SetupNumbersTest, BoxesUnderstandUnitsExponentsAndBothDecimalSigns) {
    start();
    inDialog([](QWidget& dialog) {
        const std::vector<std::tuple<const char*, const char*, double>> cases{
            {"cwnRate", "1e3", 1000},        {"cwnRate", "2.5 kHz", 2500}, {"cwnDuration", "250 ms", 0.25},
            {"cwnDuration", "1,5 s", 1.5},   {"cwnUpper", "500 mV", 0.5},  {"cwnLower", "-2,5", -2.5},
            {"cwnStartDelay", "3000 ms", 3}, {"cwnRepeat", "12 x", 12},    {"CWNumTrial", "77", 77}};
        for (const auto& [name, text, value] : cases) {
            typeOver(dialog, name, text);
            EXPECT_EQ(box(dialog, name).value(), value) << text;
            EXPECT_FALSE(box(dialog, name).marked()) << text;
        }
        pressOK(dialog);
    });
    const AcqSettings settings = saved();
    EXPECT_EQ(settings.sampling.Rate, 2500);
    EXPECT_EQ(settings.sampling.Duration, 1.5F);
    EXPECT_EQ(settings.sampling.UpperVolts, 0.5F);
}

} // namespace
} // namespace tavex2::test
