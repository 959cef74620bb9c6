#include "app/MainWindowFixture.h"
#include "display/ui/CWGraph.h"
#include "platform/qt/CWNumEdit.h"

#include <QAbstractButton>

namespace tavex2::test {
namespace {

/// The scale dialog, driven through its widgets.
class ScaleWindowTest : public MainWindowTest {
  protected:
    CWGraph& graph(const char* name) { return child<CWGraph>(name); }

    /// Opens the dialog and lets `drive` work in it; the dialog must be closed at its end.
    void inDialog(const std::function<void(QWidget& dialog)>& drive) {
        WhenDialogOpens dialog("frmScale", drive);
        action("mnuScale").trigger();
        ASSERT_TRUE(dialog.opened());
    }

    static void click(QWidget& dialog, const char* name) {
        auto* button = dialog.findChild<QAbstractButton*>(QLatin1String(name));
        ASSERT_NE(button, nullptr) << name;
        button->click();
    }
    static CWNumEdit& box(QWidget& dialog, const char* name) {
        return *dialog.findChild<CWNumEdit*>(QLatin1String(name));
    }
    /// Types into a box as a user does, and leaves it.
    static void type(QWidget& dialog, const char* name, const QString& text) {
        CWNumEdit& edit = box(dialog, name);
        edit.setFocus();
        edit.selectAll();
        QTest::keyClicks(&edit, text);
        dialog.setFocus();
    }
};

TEST_F(ScaleWindowTest, OpensWithItsCaptionsAndTheGraphsLimits) {
    start({"Duration=2", "DIOMask=0"});
    inDialog([](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Scale"));
        const std::vector<std::pair<const char*, const char*>> captions{
            {"optTime_0", "&milliseconds"}, {"optTime_1", "&seconds"},
            {"optVolts_0", "&millivolts"},  {"optVolts_1", "&volts"},
            {"optScale_0", "+/-- 10 V"},    {"optScale_1", "+/-- 5 V"},
            {"optScale_2", "0 to10 V"},     {"optScale_3", "0 to 5 V"},
            {"optScale_4", "+/-- 1 V"},     {"chkAutoScale", "&Automatic scaling"},
            {"cmdCancel", "&Cancel"}};
        for (const auto& [name, caption] : captions)
            EXPECT_EQ(dialog.findChild<QAbstractButton*>(QLatin1String(name))->text(), QLatin1String(caption));
        const std::vector<std::pair<const char*, const char*>> labels{
            {"cwnUpper", "&Upper :"}, {"cwnLower", "Lo&wer :"}, {"cwnLeft", "&Left :"}, {"cwnRight", "&Right :"}};
        for (const auto& [name, caption] : labels) {
            bool found = false;
            for (const QLabel* label : dialog.findChildren<QLabel*>())
                if (label->buddy() == &box(dialog, name)) found = label->text() == QLatin1String(caption);
            EXPECT_TRUE(found) << name;
        }
        EXPECT_TRUE(dialog.findChild<QAbstractButton*>(QStringLiteral("chkAutoScale"))->isChecked());
        EXPECT_FALSE(dialog.findChild<QWidget*>(QStringLiteral("fraScaleType"))->isEnabled());
        EXPECT_FALSE(box(dialog, "cwnUpper").isEnabled());
        EXPECT_EQ(box(dialog, "cwnRight").value(), 2);
        EXPECT_EQ(box(dialog, "cwnRight").text(), QStringLiteral("2 s"));
        EXPECT_EQ(box(dialog, "cwnUpper").text(), QStringLiteral("10 V"));
        click(dialog, "cmdCancel");
    });
    EXPECT_EQ(graph("cwGLast").xCaption(), QStringLiteral("Last Trial (seconds)"));
}

TEST_F(ScaleWindowTest, TypedLimitsKeepTheirDecimalsWhateverTheBoxShows) {
    start({"Duration=2", "DIOMask=0"});
    inDialog([](QWidget& dialog) {
        click(dialog, "chkAutoScale");
        EXPECT_TRUE(box(dialog, "cwnLeft").isEnabled());
        type(dialog, "cwnLeft", QStringLiteral("0.5"));
        type(dialog, "cwnRight", QStringLiteral("1.25 s"));
        EXPECT_EQ(box(dialog, "cwnLeft").text(), QStringLiteral("1 s"));
        EXPECT_EQ(box(dialog, "cwnLeft").value(), 0.5);
        click(dialog, "optScale_4");
        click(dialog, "cmdOK");
    });
    for (const char* name : {"cwG", "cwGLast", "cwGAvg"}) {
        EXPECT_EQ(graph(name).xMinimum(), 0.5) << name;
        EXPECT_EQ(graph(name).xMaximum(), 1.25) << name;
        EXPECT_EQ(graph(name).yMinimum(), -1) << name;
        EXPECT_EQ(graph(name).yMaximum(), 1) << name;
    }
    EXPECT_TRUE(button("Pan").isEnabled());
    EXPECT_TRUE(graph("cwG").isEnabled());
    collect();
    EXPECT_EQ(graph("cwG").xMaximum(), 1.25) << "fixed limits stay";
    EXPECT_EQ(graph("cwG").yMaximum(), 1);
}

TEST_F(ScaleWindowTest, UnitsTakeEffectAtOnceAndSurviveCancel) {
    start({"Duration=2", "DIOMask=0"});
    inDialog([this](QWidget& dialog) {
        click(dialog, "optTime_0");
        click(dialog, "optVolts_0");
        EXPECT_EQ(graph("cwG").xCaption(), QStringLiteral("Current Trial (milliseconds)")) << "before OK";
        EXPECT_EQ(box(dialog, "cwnRight").text(), QStringLiteral("2000 ms"));
        EXPECT_EQ(box(dialog, "cwnUpper").text(), QStringLiteral("10000 mV"));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(graph("cwG").yCaption(), QStringLiteral("Voltage (millivolts)"));
    EXPECT_EQ(graph("cwGAvg").labelScaleExpression(CWGraph::Axis::Time), QStringLiteral("*1000"));
    inDialog([](QWidget& dialog) {
        EXPECT_TRUE(dialog.findChild<QAbstractButton*>(QStringLiteral("optTime_0"))->isChecked());
        EXPECT_EQ(box(dialog, "cwnRight").value(), 2000);
        click(dialog, "optTime_1");
        EXPECT_EQ(box(dialog, "cwnRight").value(), 2);
        click(dialog, "cmdCancel");
    });
}

TEST_F(ScaleWindowTest, TextThatIsNoNumberIsNotTakenAndToldAboveTheButtons) {
    start({"Duration=2", "DIOMask=0"});
    inDialog([](QWidget& dialog) {
        const auto told = [&dialog] { return dialog.findChild<QLabel*>(QStringLiteral("lblError"))->text(); };
        click(dialog, "chkAutoScale");
        for (const char* text : {"abc", "1e400", "5 V"}) {
            CWNumEdit& right = box(dialog, "cwnRight");
            right.setFocus();
            right.selectAll();
            QTest::keyClicks(&right, QLatin1String(text));
            EXPECT_EQ(right.value(), 2) << text;
            EXPECT_TRUE(told().startsWith(QStringLiteral("Right : \"%1\" ").arg(QLatin1String(text))));
            EXPECT_TRUE(told().endsWith(QLatin1String("Allowed: any number of s, decimals too; ms is taken too.")));
            QTest::mouseClick(dialog.findChild<QWidget*>(QStringLiteral("cmdOK")), Qt::LeftButton);
            ASSERT_TRUE(dialog.isVisible()) << text;
            EXPECT_EQ(dialog.focusWidget(), &right);
            dialog.findChild<QWidget*>(QStringLiteral("cwnLeft"))->setFocus();
            EXPECT_EQ(right.text(), QStringLiteral("2 s"));
            EXPECT_TRUE(told().endsWith(QLatin1String("was not taken: the value is 2 s again.")))
                << told().toStdString();
        }
        click(dialog, "cmdCancel");
    });
}

TEST_F(ScaleWindowTest, ATypedUnitIsConvertedIntoTheBoxesOwn) {
    start({"Duration=2", "DIOMask=0"});
    inDialog([](QWidget& dialog) {
        click(dialog, "chkAutoScale");
        type(dialog, "cwnLeft", QStringLiteral("250 ms"));
        type(dialog, "cwnRight", QStringLiteral("1,5"));
        EXPECT_EQ(box(dialog, "cwnLeft").value(), 0.25);
        EXPECT_EQ(box(dialog, "cwnRight").value(), 1.5);
        click(dialog, "optTime_0");
        type(dialog, "cwnRight", QStringLiteral("2.5 s"));
        EXPECT_EQ(box(dialog, "cwnRight").value(), 2500);
        type(dialog, "cwnUpper", QStringLiteral("4 mV"));
        EXPECT_EQ(box(dialog, "cwnUpper").value(), 0.004);
        click(dialog, "cmdCancel");
    });
}

TEST_F(ScaleWindowTest, ABoxThatIsEnteredShowsItsNumberToTheLastDigit) {
    start({"Duration=2", "DIOMask=0"});
    inDialog([](QWidget& dialog) {
        click(dialog, "chkAutoScale");
        CWNumEdit& right = box(dialog, "cwnRight");
        for (const double value : {123456792.0, 16777217.0, 0.1, static_cast<double>(0.05F)}) {
            right.clearFocus();
            right.setValue(value);
            right.setFocus();
            ASSERT_TRUE(waitFor([&right] { return right.hasFocus(); }));
            EXPECT_EQ(static_cast<float>(right.text().toDouble()), static_cast<float>(value))
                << right.text().toStdString();
            EXPECT_LE(right.text().size(), 12) << right.text().toStdString();
        }
        click(dialog, "cmdCancel");
    });
}

TEST_F(ScaleWindowTest, ArrowKeysStepABox) {
    start({"Duration=2", "DIOMask=0"});
    inDialog([](QWidget& dialog) {
        click(dialog, "chkAutoScale");
        CWNumEdit& right = box(dialog, "cwnRight");
        QTest::keyClick(&right, Qt::Key_Up);
        EXPECT_DOUBLE_EQ(right.value(), 2.1);
        QTest::keyClick(&right, Qt::Key_Down);
        EXPECT_DOUBLE_EQ(right.value(), 2.0);
        click(dialog, "cmdCancel");
    });
}

TEST_F(ScaleWindowTest, OKWithAutomaticScalingShowsAllOfTheTrial) {
    start();
    collect();
    graph("cwG").setAxisRange(CWGraph::Axis::Time, 0.01, 0.02);
    inDialog([](QWidget& dialog) { click(dialog, "cmdOK"); });
    EXPECT_NEAR(graph("cwG").xMaximum(), 0.05, 1e-6);
    EXPECT_EQ(graph("cwG").xMinimum(), 0);
    EXPECT_FALSE(button("Pan").isEnabled());
}

TEST_F(ScaleWindowTest, OpensOverTheMiddleOfTheWindow) {
    start();
    window().move(200, 150);
    inDialog([this](QWidget& dialog) {
        const QPoint distance = dialog.frameGeometry().center() - window().frameGeometry().center();
        EXPECT_LE(distance.manhattanLength(), 4);
        click(dialog, "cmdCancel");
    });
}

} // namespace
} // namespace tavex2::test
