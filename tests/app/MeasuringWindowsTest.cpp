#include "analysis/ChannelMeasures.h"
#include "app/MainWindowFixture.h"
#include "base/Decimal.h"
#include "display/ui/CWGraph.h"
#include "files/Import.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QScopeGuard>
#include <QTreeWidget>

namespace tavex2::test {
namespace {

/// The information window and the overlay window, driven through the main window's menus by mouse and keys. What they
/// show is compared with what is worked out from the trial's file.
class MeasuringWindowsTest : public MainWindowTest {
  protected:
    /// Waits until the form is drawn, and closes it however the test goes on.
    static auto closeAtEnd(QWidget& form) {
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
        return qScopeGuard([&form] { form.close(); });
    }
    static QString box(const QWidget& form, const char* name) {
        return form.findChild<QLineEdit*>(QLatin1String(name))->text();
    }
    static CWGraph& graphOf(const QWidget& form) { return *form.findChild<CWGraph*>(QStringLiteral("cwG")); }
    static QPoint placeOf(const CWGraph& graph, double seconds) {
        return {static_cast<int>(graph.xAxis->coordToPixel(seconds)), graph.axisRect()->center().y()};
    }
    static void drag(CWGraph& graph, double from, double to) {
        QTest::mousePress(&graph, Qt::LeftButton, {}, placeOf(graph, from));
        QTest::mouseMove(&graph, placeOf(graph, (from + to) / 2));
        QTest::mouseMove(&graph, placeOf(graph, to));
        QTest::mouseRelease(&graph, Qt::LeftButton, {}, placeOf(graph, to));
    }
    static QString volts(double value) { return QString::fromStdString(fixedDecimal(value, 4)); }
    /// The readings boxes are those of the samples under the cursors' times.
    static void expectReadings(const QWidget& form, const TrialData& channel, double rateHz) {
        const ChannelMeasures measures(std::make_shared<const TrialPyramid>(channel), 0, rateHz);
        const auto sample = [&](const char* name) { return std::llround(box(form, name).toDouble() * rateHz); };
        const auto read = measures.between(sample("txtLeft"), sample("txtRight"));
        ASSERT_TRUE(read);
        const auto text = [](double value, int decimals) {
            return QString::fromStdString(fixedDecimal(value, decimals));
        };
        EXPECT_EQ(box(form, "txtMin"), text(read->Minimum, 4));
        EXPECT_EQ(box(form, "txtMax"), text(read->Maximum, 4));
        EXPECT_EQ(box(form, "txtP2P"), text(read->peakToPeak(), 4));
        EXPECT_EQ(box(form, "txtIntegral"), text(read->Integral, 7));
    }
    /// Presses a key that copies and waits for the lines in the clipboard.
    static QStringList copied(QWidget& form, Qt::KeyboardModifiers modifiers) {
        QApplication::clipboard()->clear();
        // The main window, from which it opened, may still be about to become the active one.
        EXPECT_TRUE(waitFor([&form] {
            form.activateWindow();
            return form.isActiveWindow() && graphOf(form).hasFocus();
        }));
        QTest::keyClick(&graphOf(form), Qt::Key_C, modifiers);
        EXPECT_TRUE(waitFor([] { return !QApplication::clipboard()->text().isEmpty(); }));
        return QApplication::clipboard()->text().split(QLatin1Char('\n'));
    }
    TrialData saved(const char* name) {
        saveAs(QString::fromStdString((folder / name).string()));
        return std::make_shared<const TrialArray>(std::move(readLmbFile(folder / name).value().samples));
    }
};

const std::vector<std::string> settings{"Channels=0:1", "Rate=1000", "Duration=0.5", "DIOMask=0"};

TEST_F(MeasuringWindowsTest, TheInformationWindowMeasuresTheWholeTrialAtFirst) {
    start(settings);
    EXPECT_FALSE(action("mnuInfo").isEnabled());
    collect();
    const TrialData trial = saved("t.lmb");
    WhenDialogOpens info("frmInfo", [&](QWidget& form) {
        const auto closing = closeAtEnd(form);
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Infomation"));
        EXPECT_TRUE(form.isModal());
        EXPECT_EQ(form.minimumSize(), form.size()) << "it springs back to the size at which it opened";
        auto& channels = *form.findChild<QComboBox*>(QStringLiteral("cbChannels"));
        ASSERT_EQ(channels.count(), 2);
        EXPECT_EQ(channels.itemText(1), QStringLiteral("Channel 1"));
        EXPECT_EQ(graphOf(form).axisCaption(CWGraph::Axis::Time), QStringLiteral("Time"));
        EXPECT_EQ(graphOf(form).axisCaption(CWGraph::Axis::Voltage), QStringLiteral("Volts"));
        EXPECT_EQ(graphOf(form).plotCount(), 1);
        EXPECT_EQ(box(form, "txtLeft"), QStringLiteral("0.0000"));
        EXPECT_EQ(box(form, "txtRight"), QStringLiteral("0.5000"));
        EXPECT_EQ(box(form, "txtInterval"), QStringLiteral("0.5000"));
        for (const int channel : {0, 1}) {
            channels.setCurrentIndex(channel);
            EXPECT_LE(graphOf(form).yMinimum(), graphOf(form).pyramid()->whole().lowest) << "it fits each channel";
            EXPECT_GE(graphOf(form).yMaximum(), graphOf(form).pyramid()->whole().highest);
            expectReadings(form, ExtractChannel(trial, channel, false).value(), 1000);
        }
        form.findChild<QCheckBox*>(QStringLiteral("chkRectify"))->click();
        expectReadings(form, ExtractChannel(trial, 1, true).value(), 1000);
        EXPECT_GE(box(form, "txtMin").toDouble(), 0.0);
    });
    action("mnuInfo").trigger();
    ASSERT_TRUE(info.opened());
}

TEST_F(MeasuringWindowsTest, CursorsFollowMouseAndKeysAndMayCross) {
    start(settings);
    collect();
    const TrialData channel = ExtractChannel(saved("t.lmb"), 0, false).value();
    WhenDialogOpens info("frmInfo", [&](QWidget& form) {
        const auto closing = closeAtEnd(form);
        CWGraph& graph = graphOf(form);
        graph.replot();
        // A click brings the nearer cursor.
        QTest::mouseClick(&graph, Qt::LeftButton, {}, placeOf(graph, 0.1));
        EXPECT_NEAR(box(form, "txtLeft").toDouble(), 0.1, 0.003);
        EXPECT_EQ(box(form, "txtRight"), QStringLiteral("0.5000"));
        expectReadings(form, channel, 1000);
        drag(graph, box(form, "txtLeft").toDouble(), 0.3);
        EXPECT_NEAR(box(form, "txtLeft").toDouble(), 0.3, 0.003);

        graph.setFocus();
        const double before = box(form, "txtLeft").toDouble();
        QTest::keyClick(&graph, Qt::Key_Right);
        EXPECT_NEAR(box(form, "txtLeft").toDouble(), before + 0.001, 1e-9);
        QTest::keyClick(&graph, Qt::Key_Left, Qt::ShiftModifier);
        EXPECT_NEAR(box(form, "txtLeft").toDouble(), before - 0.009, 1e-9);
        QTest::keyClick(&graph, Qt::Key_2);
        QTest::keyClick(&graph, Qt::Key_Home);
        EXPECT_EQ(box(form, "txtRight"), QStringLiteral("0.0000"));
        EXPECT_EQ(box(form, "txtInterval"), box(form, "txtLeft")) << "crossed, and positive";
        expectReadings(form, channel, 1000);
        QTest::keyClick(&graph, Qt::Key_Left);
        EXPECT_EQ(box(form, "txtRight"), QStringLiteral("0.0000")) << "not beyond the first sample";
        QTest::keyClick(&graph, Qt::Key_1);
        QTest::keyClick(&graph, Qt::Key_Home);
        EXPECT_EQ(box(form, "txtP2P"), QStringLiteral("0.0000")) << "one sample";
        expectReadings(form, channel, 1000);

        // Both on one sample come apart to the side on which the pointer is.
        drag(graph, 0.0, 0.2);
        EXPECT_NEAR(box(form, "txtRight").toDouble(), 0.2, 0.003);
        EXPECT_EQ(box(form, "txtLeft"), QStringLiteral("0.0000"));
    });
    action("mnuInfo").trigger();
    ASSERT_TRUE(info.opened());
}

TEST_F(MeasuringWindowsTest, KeysMoveTheCursorsWhateverWasClickedLast) {
    start(settings);
    collect();
    action("mnuOverlay").trigger();
    for (const auto& [command, name] : {std::pair{"mnuInfo", "frmInfo"}, std::pair{"mnuViewOverlay", "frmOverlay"}}) {
        WhenDialogOpens opens(name, [&](QWidget& form) {
            const auto closing = closeAtEnd(form);
            ASSERT_TRUE(waitFor([&form] {
                form.activateWindow();
                return form.isActiveWindow() && graphOf(form).hasFocus();
            }));
            const auto press = [](Qt::Key key) {
                ASSERT_NE(QApplication::focusWidget(), nullptr);
                QTest::keyClick(QApplication::focusWidget(), key);
            };
            const auto keysMove = [&](const char* clicked) {
                press(Qt::Key_1);
                press(Qt::Key_Home);
                press(Qt::Key_Right);
                press(Qt::Key_2);
                press(Qt::Key_End);
                press(Qt::Key_Left);
                EXPECT_EQ(box(form, "txtLeft"), QStringLiteral("0.0010")) << clicked;
                EXPECT_EQ(box(form, "txtRight"), QStringLiteral("0.4990")) << clicked;
            };
            keysMove("nothing");
            for (const char* each : {"chkRectify", "chkAverage", "cmdCopy", "txtLeft", "lstNames"}) {
                auto* control = form.findChild<QWidget*>(QLatin1String(each));
                if (control == nullptr) continue; // the other window's
                auto* view = qobject_cast<QAbstractScrollArea*>(control);
                QTest::mouseClick(view != nullptr ? view->viewport() : control, Qt::LeftButton, {}, QPoint(8, 8));
                keysMove(each);
            }
            auto& channels = *form.findChild<QComboBox*>(QStringLiteral("cbChannels"));
            QTest::mouseClick(&channels, Qt::LeftButton);
            ASSERT_TRUE(waitFor([&channels] { return channels.view()->isVisible(); }));
            QTest::keyClick(channels.view(), Qt::Key_Down);
            QTest::keyClick(channels.view(), Qt::Key_Return);
            ASSERT_TRUE(waitFor([&channels] { return !channels.view()->isVisible(); }));
            EXPECT_EQ(channels.currentIndex(), 1);
            keysMove("cbChannels");
            EXPECT_EQ(channels.currentIndex(), 1);
        });
        action(command).trigger();
        ASSERT_TRUE(opens.opened());
    }
}

TEST_F(MeasuringWindowsTest, ADoubleClickShowsTheWholeChannelAndMovesNoCursor) {
    start(settings);
    collect();
    WhenDialogOpens info("frmInfo", [&](QWidget& form) {
        const auto closing = closeAtEnd(form);
        CWGraph& graph = graphOf(form);
        graph.setAxisRange(CWGraph::Axis::Time, 0.1, 0.3);
        graph.replot();
        doubleClick(graph, placeOf(graph, 0.2));
        EXPECT_EQ(box(form, "txtLeft"), QStringLiteral("0.0000"));
        EXPECT_EQ(box(form, "txtRight"), QStringLiteral("0.5000"));
        EXPECT_EQ(graph.xMinimum(), 0);
        EXPECT_NEAR(graph.xMaximum(), 0.5, 1e-9);
    });
    action("mnuInfo").trigger();
    ASSERT_TRUE(info.opened());
}

TEST_F(MeasuringWindowsTest, ReadingsTellTheirUnitAndTheValuesAtTheCursors) {
    start(settings);
    collect();
    const TrialData trial = saved("t.lmb");
    WhenDialogOpens info("frmInfo", [&](QWidget& form) {
        const auto closing = closeAtEnd(form);
        const auto unit = [&form](const char* name) {
            const auto* label = form.findChild<QLabel*>(QLatin1String(name));
            return label != nullptr && label->isVisible() ? label->text() : QString();
        };
        for (const char* seconds : {"unitLeft", "unitRight", "unitInterval"})
            EXPECT_EQ(unit(seconds), QStringLiteral("s")) << seconds;
        for (const char* each : {"unitMin", "unitMax", "unitP2P", "unitValue1", "unitValue2"})
            EXPECT_EQ(unit(each), QStringLiteral("V")) << each;
        EXPECT_EQ(unit("unitIntegral"), QStringLiteral("V s"));
        graphOf(form).setFocus();
        for (int k = 0; k < 100; ++k)
            QTest::keyClick(&graphOf(form), Qt::Key_Right);
        EXPECT_EQ(box(form, "txtValue1"), volts(trial->at(0, 100)));
        EXPECT_EQ(box(form, "txtValue2"), volts(trial->at(0, 500)));
    });
    action("mnuInfo").trigger();
    ASSERT_TRUE(info.opened());
}

TEST_F(MeasuringWindowsTest, AReadingTooLongForItsBoxShowsItsBeginning) {
    start(settings);
    collect();
    WhenDialogOpens info("frmInfo", [&](QWidget& form) {
        const auto closing = closeAtEnd(form);
        graphOf(form).setFocus();
        QTest::keyClick(&graphOf(form), Qt::Key_Right);
        for (const char* each : {"txtLeft", "txtMin", "txtMax", "txtP2P", "txtIntegral", "txtValue1"}) {
            auto& shown = *form.findChild<QLineEdit*>(QLatin1String(each));
            EXPECT_FALSE(shown.text().isEmpty()) << each;
            EXPECT_EQ(shown.cursorPosition(), 0) << each;
        }
    });
    action("mnuInfo").trigger();
    ASSERT_TRUE(info.opened());
}

TEST_F(MeasuringWindowsTest, CursorsStartAtTheEndsOfTheMainGraphsView) {
    start(settings);
    collect();
    child<CWGraph>("cwG").setAxisRange(CWGraph::Axis::Time, 0.1004, 0.2996);
    WhenDialogOpens info("frmInfo", [&](QWidget& form) {
        const auto closing = closeAtEnd(form);
        EXPECT_EQ(graphOf(form).xMinimum(), 0.1004);
        EXPECT_EQ(graphOf(form).xMaximum(), 0.2996);
        EXPECT_EQ(box(form, "txtLeft"), QStringLiteral("0.1010"));
        EXPECT_EQ(box(form, "txtRight"), QStringLiteral("0.2990"));
    });
    action("mnuInfo").trigger();
    ASSERT_TRUE(info.opened());
}

TEST_F(MeasuringWindowsTest, ReadingsGoToTheClipboardByKey) {
    start(settings);
    collect();
    WhenDialogOpens info("frmInfo", [&](QWidget& form) {
        const auto closing = closeAtEnd(form);
        const QStringList one = copied(form, Qt::ControlModifier);
        ASSERT_EQ(one.size(), 3) << "heading, line, end";
        EXPECT_TRUE(one[0].startsWith(QLatin1String("Trial\tChannel\tUnit\tCursor 1 (s)\tCursor 2 (s)")));
        EXPECT_TRUE(one[1].startsWith(QLatin1String("Trial0001\tChannel 00\tV\t0.0000\t0.5000\t0.5000\t")));
        EXPECT_TRUE(one[1].endsWith(box(form, "txtIntegral")));
        const QStringList all = copied(form, Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_EQ(all.size(), 4);
        EXPECT_EQ(all[1], one[1]);
        EXPECT_TRUE(all[2].startsWith(QLatin1String("Trial0001\tChannel 01\tV\t")));
    });
    action("mnuInfo").trigger();
    ASSERT_TRUE(info.opened());
}

TEST_F(MeasuringWindowsTest, OverlaidTrialsAreShownAveragedAndCleared) {
    start(settings);
    EXPECT_FALSE(action("mnuOverlay").isEnabled());
    std::vector<TrialData> trials;
    for (const char* name : {"A.lmb", "B.lmb", "C.lmb"}) {
        collect();
        trials.push_back(saved(name));
        EXPECT_TRUE(action("mnuOverlay").isEnabled());
        action("mnuOverlay").trigger();
        EXPECT_FALSE(action("mnuOverlay").isEnabled()) << "each trial once";
    }
    WhenDialogOpens overlays("frmOverlay", [&](QWidget& form) {
        const auto closing = closeAtEnd(form);
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Overlays"));
        auto& names = *form.findChild<QTreeWidget*>(QStringLiteral("lstNames"));
        ASSERT_EQ(names.topLevelItemCount(), 3);
        const CWGraph& mainGraph = child<CWGraph>("cwG");
        EXPECT_EQ(graphOf(form).yMinimum(), mainGraph.yMinimum()) << "both show the same ranges";
        EXPECT_EQ(graphOf(form).yMaximum(), mainGraph.yMaximum());
        EXPECT_EQ(graphOf(form).xMaximum(), mainGraph.xMaximum());
        EXPECT_EQ(names.topLevelItem(1)->text(0), QStringLiteral("B"));
        EXPECT_EQ(names.topLevelItem(1)->text(1), volts(trials[1]->at(0, 0))) << "under cursor 1";
        EXPECT_EQ(names.topLevelItem(2)->text(2), volts(trials[2]->at(0, 500))) << "under cursor 2";
        EXPECT_EQ(graphOf(form).plotCount(), 3);
        EXPECT_EQ(box(form, "txtRight"), QStringLiteral("0.5000"));
        auto& minimum = *form.findChild<QWidget*>(QStringLiteral("txtMin"));
        EXPECT_FALSE(minimum.isVisible()) << "only the average is measured";
        EXPECT_EQ(copied(form, Qt::ControlModifier).size(), 5) << "heading, three trials, end";

        form.findChild<QCheckBox*>(QStringLiteral("chkAverage"))->click();
        EXPECT_TRUE(minimum.isVisible());
        EXPECT_TRUE(form.findChild<QWidget*>(QStringLiteral("lblIntegral"))->isVisible());
        EXPECT_EQ(graphOf(form).plotCount(), 1);
        ASSERT_EQ(names.topLevelItemCount(), 1);
        EXPECT_EQ(names.topLevelItem(0)->text(0), QStringLiteral("Average of 3"));
        const TracePyramid& average = graphOf(form).pyramid()->channel(0);
        EXPECT_NEAR(average.sample(100), (trials[0]->at(0, 100) + trials[1]->at(0, 100) + trials[2]->at(0, 100)) / 3,
                    1e-6);
        EXPECT_EQ(box(form, "txtValue1"), volts(average.sample(0)));
        expectReadings(form, graphOf(form).pyramid()->trial(), 1000);
        form.findChild<QCheckBox*>(QStringLiteral("chkRectify"))->click();
        expectReadings(form, graphOf(form).pyramid()->trial(), 1000);
        EXPECT_GE(box(form, "txtMin").toDouble(), 0.0);
        form.findChild<QComboBox*>(QStringLiteral("cbChannels"))->setCurrentIndex(1);
        expectReadings(form, graphOf(form).pyramid()->trial(), 1000);
    });
    action("mnuViewOverlay").trigger();
    ASSERT_TRUE(overlays.opened());

    const QString table = QString::fromStdString((folder / "mean.lma").string());
    WhenDialogOpens dialog("CommonDialog", [&](QWidget& shown) { enterFileName(shown, table); });
    action("mnuLumidorO").trigger();
    ASSERT_TRUE(dialog.opened());
    EXPECT_TRUE(
        bytesOf(folder / "mean.lma").starts_with("* C.lma\r\n* C.lma\r\n* Tavex2 data acquisition overlay file"));

    action("mnuClear").trigger();
    for (const char* name : {"mnuViewOverlay", "mnuClear"})
        EXPECT_FALSE(action(name).isEnabled()) << name;
    EXPECT_TRUE(action("mnuOverlay").isEnabled());
}

TEST_F(MeasuringWindowsTest, ATrialOfOneChannelIsMeasuredAndOverlaid) {
    start({"Channels=2", "Rate=1000", "Duration=0.1", "DIOMask=0"});
    collect();
    action("mnuOverlay").trigger();
    for (const auto& [command, form] : {std::pair{"mnuInfo", "frmInfo"}, std::pair{"mnuViewOverlay", "frmOverlay"}}) {
        WhenDialogOpens opens(form, [&](QWidget& shown) {
            const auto closing = closeAtEnd(shown);
            EXPECT_EQ(shown.findChild<QComboBox*>(QStringLiteral("cbChannels"))->count(), 1);
            if (auto* average = shown.findChild<QCheckBox*>(QStringLiteral("chkAverage"))) average->click();
            expectReadings(shown, graphOf(shown).pyramid()->trial(), 1000);
        });
        action(command).trigger();
        ASSERT_TRUE(opens.opened());
    }
}

TEST_F(MeasuringWindowsTest, ATrialOfOneSampleHasNoReadings) {
    start({"Channels=0:1", "Rate=10", "Duration=0.01", "DIOMask=0"});
    collect();
    WhenDialogOpens info("frmInfo", [&](QWidget& form) {
        const auto closing = closeAtEnd(form);
        EXPECT_EQ(box(form, "txtLeft"), QStringLiteral("0.0000"));
        EXPECT_EQ(box(form, "txtMin"), QString());
        EXPECT_EQ(box(form, "txtIntegral"), QString());
        graphOf(form).setFocus();
        QTest::keyClick(&graphOf(form), Qt::Key_Right);
    });
    action("mnuInfo").trigger();
    ASSERT_TRUE(info.opened());
}

} // namespace
} // namespace tavex2::test
