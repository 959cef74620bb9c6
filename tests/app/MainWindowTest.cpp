#include "app/MainWindowFixture.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QToolBar>

#include <fstream>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;

TEST_F(MainWindowTest, OpensReadyWithThreeEmptyGraphsAndNothingToSave) {
    start();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(status(), QStringLiteral("Ready"));
    EXPECT_TRUE(child<QLabel>("StatusPanel2").text().startsWith(QLatin1String("Device: ")));
    for (const char* graph : {"cwG", "cwGLast", "cwGAvg"}) {
        EXPECT_TRUE(child<QWidget>(graph).isVisible());
        EXPECT_EQ(plots(graph), 0);
    }
    EXPECT_EQ(child<QWidget>("cwG").property("xCaption"), QStringLiteral("Current Trial (seconds)"));
    EXPECT_EQ(child<QWidget>("cwGLast").property("xCaption"), QStringLiteral("Last Trial  (seconds)"));
    EXPECT_EQ(child<QWidget>("cwGAvg").property("xCaption"), QStringLiteral("Saved Trials Average (seconds)"));
    for (const char* name : {"mnuSave", "mnuSaveAs", "tbSave"})
        EXPECT_FALSE(action(name).isEnabled()) << name;
    EXPECT_FALSE(button("Stop").isEnabled());
    EXPECT_TRUE(button("Collect").isEnabled());
}

TEST_F(MainWindowTest, EveryCommandHasANameATextAndATip) {
    start();
    for (const QAction* each : window().findChildren<QAction*>()) {
        if (each->isSeparator() || each->menu() != nullptr || each->text().isEmpty()) continue;
        EXPECT_FALSE(each->objectName().isEmpty()) << each->text().toStdString();
        EXPECT_FALSE(each->toolTip().isEmpty()) << each->objectName().toStdString();
        const QStringList waiting{
            QStringLiteral("tbStop"),         QStringLiteral("tbZoom"),      QStringLiteral("tbPan"),
            QStringLiteral("mnuMousePans"),   QStringLiteral("mnuInfo"),     QStringLiteral("tbInformation"),
            QStringLiteral("tbLumidor2"),     QStringLiteral("mnuOverlay"),  QStringLiteral("mnuClear"),
            QStringLiteral("mnuViewOverlay"), QStringLiteral("mnuTab"),      QStringLiteral("mnuLumidor"),
            QStringLiteral("mnuPulvo"),       QStringLiteral("mnuLumidorO"), QStringLiteral("mnuUndo"),
            QStringLiteral("mnuDigital")};
        const bool waitsForState =
            each->objectName().contains(QLatin1String("Save")) || waiting.contains(each->objectName());
        EXPECT_TRUE(each->isEnabled() || waitsForState || each->toolTip().contains(QLatin1String("not offered")))
            << each->objectName().toStdString();
    }
    QStringList keys;
    for (QAction* each : child<QToolBar>("tbToolBar").actions())
        if (QWidget* widget = child<QToolBar>("tbToolBar").widgetForAction(each); !each->isSeparator())
            keys << widget->objectName();
    EXPECT_EQ(keys.join(QLatin1Char(' ')),
              QStringLiteral("Open Save SaveAs Print Configure Legend Realtime Collect Stop Zoom Pan Reset Lumidor2 "
                             "Information Help"));
}

TEST_F(MainWindowTest, CollectsATrialShowsItAndTheOneBefore) {
    start();
    collect();
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Trial0001 (Unsaved)"));
    EXPECT_EQ(plots("cwG"), 2);
    EXPECT_EQ(plots("cwGLast"), 0);
    EXPECT_DOUBLE_EQ(child<QWidget>("cwG").property("xMinimum").toDouble(), 0.0);
    EXPECT_DOUBLE_EQ(child<QWidget>("cwG").property("xMaximum").toDouble(), 0.05);
    EXPECT_TRUE(action("mnuSave").isEnabled());
    EXPECT_TRUE(child<QWidget>("cwG").accessibleDescription().contains(QLatin1String("51 samples")))
        << child<QWidget>("cwG").accessibleDescription().toStdString();
    collect();
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Trial0002 (Unsaved)"));
    EXPECT_EQ(plots("cwGLast"), 2);
    EXPECT_EQ(plots("cwGAvg"), 0);
}

TEST_F(MainWindowTest, TheSpaceBarCollects) {
    start();
    QTest::keyClick(&child<QWidget>("cwG"), Qt::Key_Space);
    ASSERT_TRUE(waitFor([this] { return plots("cwG") == 2; }));
}

TEST_F(MainWindowTest, SavingWritesTheFileAndShowsTheAverage) {
    start();
    collect();
    saveAs(QString::fromStdString((folder / "First.lmb").string()));
    EXPECT_EQ(fs::file_size(folder / "First.lmb"), 4374U + 4U * 51U * 3U);
    EXPECT_EQ(window().windowTitle(), QStringLiteral("First"));
    EXPECT_EQ(plots("cwGAvg"), 2);
    action("mnuClearAverage").trigger();
    EXPECT_EQ(plots("cwGAvg"), 0);
}

TEST_F(MainWindowTest, TheSaveDialogComesUpReadyToBeConfirmed) {
    start();
    collect();
    WhenDialogOpens dialog("CommonDialog", [&](QWidget& shown) {
        EXPECT_EQ(shown.windowTitle(), QStringLiteral("Save data in Lumidor2 binary (.LMB) file"));
        auto* edit = shown.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        EXPECT_EQ(edit->text(), QStringLiteral("Trial0001.lmb"));
        QTest::keyClick(edit, Qt::Key_Return);
    });
    action("mnuSave").trigger();
    ASSERT_TRUE(dialog.opened());
    EXPECT_TRUE(fs::exists(folder / "Trial0001.lmb"));
}

TEST_F(MainWindowTest, ANameTypedWithoutAnExtensionGetsOne) {
    start();
    collect();
    saveAs(QString::fromStdString((folder / "plain").string()));
    EXPECT_TRUE(fs::exists(folder / "plain.lmb"));
    EXPECT_EQ(window().windowTitle(), QStringLiteral("plain"));
}

TEST_F(MainWindowTest, AutosaveWithoutAskingNeverOverwrites) {
    start();
    std::ofstream(folder / "Trial0001.lmb") << "precious";
    action("mnuOption_0").trigger();
    action("mnuAutosaveWithoutAsking").trigger();
    collect();
    EXPECT_EQ(bytesOf(folder / "Trial0001.lmb"), "precious");
    EXPECT_TRUE(fs::exists(folder / "Trial0001 (2).lmb"));
    EXPECT_TRUE(status().contains(QLatin1String("Trial0001 (2)"))) << status().toStdString();
    EXPECT_EQ(plots("cwGAvg"), 2);
}

TEST_F(MainWindowTest, AnOwnSettingOfTheCommandLineIsMarkedAndStoredAtExit) {
    start({"DIOMask=0", "AutosaveWithoutAsking=True"});
    EXPECT_TRUE(action("mnuAutosaveWithoutAsking").isChecked());
    window().close();
    EXPECT_EQ(store.values["Tavex2/Startup/Autosavewithoutasking"], "True");
}

TEST_F(MainWindowTest, TheSetupIsSavedFromTheOptionsMenu) {
    start({"Rate=500", "DIOMask=0"});
    WhenDialogOpens dialog("CommonDialog", [&](QWidget& shown) {
        enterFileName(shown, QString::fromStdString((folder / "Protocol.set").string()));
    });
    action("mnuOption_6").trigger();
    ASSERT_TRUE(dialog.opened());
    EXPECT_EQ(fs::file_size(folder / "Protocol.set"), 176U + 5U); // the prefix "Trial"
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Protocol"));
}

TEST_F(MainWindowTest, StopAsksFirstAndYesLosesTheTrial) {
    start({"Duration=3000"});
    button("Collect").click();
    EXPECT_TRUE(button("Stop").isEnabled());
    ASSERT_TRUE(waitFor([this] { return child<QProgressBar>("prgTrial").isVisible(); }));
    EXPECT_TRUE(child<QProgressBar>("prgTrial").format().endsWith(QLatin1String("of 3000.0 s")));
    WhenDialogOpens no("MessageBox", [](QWidget& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Stop Current Trial"));
        press(box, QMessageBox::No);
    });
    button("Stop").click();
    ASSERT_TRUE(no.opened());
    EXPECT_TRUE(button("Stop").isEnabled());
    WhenDialogOpens yes("MessageBox", [](QWidget& box) { press(box, QMessageBox::Yes); });
    button("Stop").click();
    ASSERT_TRUE(yes.opened());
    EXPECT_EQ(status(), QStringLiteral("Stopped"));
    EXPECT_FALSE(button("Stop").isEnabled());
    EXPECT_FALSE(child<QProgressBar>("prgTrial").isVisible());
    EXPECT_FALSE(action("mnuSave").isEnabled());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowTest, TheTrialBeforeIsSavedUnderItsOwnNameWhileTheNextOneIsAwaited) {
    start({"TriggerMode=1", "TriggerChannel=0", "TriggerLevel=1.5", "Pretrigger=0", "Duration=0.05", "DIOMask=0"});
    collect();
    button("Collect").click();
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Trial0001 (Unsaved)"));
    WhenDialogOpens dialog("CommonDialog", [&](QWidget& shown) {
        auto* edit = shown.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        EXPECT_EQ(edit->text(), QStringLiteral("Trial0001.lmb"));
        QTest::keyClick(edit, Qt::Key_Return);
    });
    action("mnuSave").trigger();
    ASSERT_TRUE(dialog.opened());
    EXPECT_TRUE(fs::exists(folder / "Trial0001.lmb"));
    ASSERT_TRUE(collected());
    ASSERT_TRUE(waitFor([&] { return window().windowTitle() == QLatin1String("Trial0002 (Unsaved)"); }));
}

TEST_F(MainWindowTest, ATriggeredCollectionShowsTheWaitingWindowUntilStop) {
    start({"TriggerMode=1", "TriggerChannel=0", "TriggerLevel=9.8", "DIOMask=0"});
    button("Collect").click();
    EXPECT_EQ(status(), QStringLiteral("Waiting for trigger before acquiring data"));
    auto& waiting = child<QWidget>("frmWaiting");
    EXPECT_TRUE(waiting.isVisible());
    EXPECT_EQ(waiting.windowTitle(), QStringLiteral("Waiting..."));
    EXPECT_FALSE(waiting.isModal());
    WhenDialogOpens question("MessageBox", [](QWidget& box) { press(box, QMessageBox::Yes); });
    button("Stop").click();
    ASSERT_TRUE(question.opened());
    EXPECT_FALSE(waiting.isVisible());
}

TEST_F(MainWindowTest, WithoutABoardItSaysSo) {
    start({"Device=2"}, std::nullopt);
    WhenDialogOpens message("MessageBox", [](QWidget& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("No A/D Device"));
        press(box, QMessageBox::Ok);
    });
    button("Collect").click();
    ASSERT_TRUE(message.opened());
    EXPECT_FALSE(action("mnuSave").isEnabled());
}

TEST_F(MainWindowTest, ABoardThatVanishesLeavesWhatHadArrived) {
    start({"Duration=1", "DIOMask=0"}, "simulator:fail=vanish@100");
    WhenDialogOpens message("MessageBox", [](QWidget& box) {
        const QString text = dynamic_cast<QMessageBox&>(box).text();
        EXPECT_TRUE(text.startsWith(QLatin1String("Error: -10010\nContext: "))) << text.toStdString();
        press(box, QMessageBox::Ok);
    });
    button("Collect").click();
    ASSERT_TRUE(waitFor([&] { return message.opened(); }));
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Trial0001-partial (Unsaved)"));
    EXPECT_EQ(plots("cwG"), 2);
    saveAs(QString::fromStdString((folder / "part.lmb").string()));
    EXPECT_EQ(fs::file_size(folder / "part.lmb"), 4374U + 4U * 100U * 3U);
}

TEST_F(MainWindowTest, ARefusedConfigurationLeavesTheWindowAsItWas) {
    start({"Channels=0:70"});
    WhenDialogOpens message("MessageBox", [](QWidget& box) {
        EXPECT_TRUE(dynamic_cast<QMessageBox&>(box).text().startsWith(QLatin1String("DAQ Error: -10002\n")));
        press(box, QMessageBox::Ok);
    });
    button("Collect").click();
    ASSERT_TRUE(message.opened());
    EXPECT_EQ(status(), QStringLiteral("Ready"));
    EXPECT_FALSE(button("Stop").isEnabled());
}

TEST_F(MainWindowTest, DebugModeCollectsNothingAndItsSaveIsHarmless) {
    start();
    action("mnuOption_1").trigger();
    button("Collect").click();
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Trial0001 (Unsaved)"));
    EXPECT_TRUE(action("mnuSave").isEnabled());
    action("mnuSave").trigger();
    EXPECT_EQ(status(), QStringLiteral("There is no trial to save."));
    EXPECT_EQ(plots("cwG"), 0);
}

TEST_F(MainWindowTest, ClosingAsksAboutAnUnsavedTrialAndCancelKeepsTheWindow) {
    start();
    collect();
    WhenDialogOpens question("MessageBox", [](QWidget& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Last Trial Saved"));
        press(box, QMessageBox::Cancel);
    });
    action("mnuExit").trigger();
    ASSERT_TRUE(question.opened());
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(store.values.size(), 1U) << "only what the test put there";

    WhenDialogOpens again("MessageBox", [](QWidget& box) { press(box, QMessageBox::No); });
    window().close();
    ASSERT_TRUE(again.opened());
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(store.values["Tavex2/Startup/Fullscreen"], "False");
}

TEST_F(MainWindowTest, ClosingAfterYesAndACancelledSaveKeepsTheTrial) {
    start();
    collect();
    WhenDialogOpens question("MessageBox", [](QWidget& box) { press(box, QMessageBox::Yes); });
    WhenDialogOpens save("CommonDialog", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    window().close();
    ASSERT_TRUE(question.opened());
    ASSERT_TRUE(save.opened());
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Trial0001 (Unsaved)"));
}

TEST_F(MainWindowTest, ClosingRightAfterASaveAsksNothing) {
    start();
    collect();
    saveAs(QString::fromStdString((folder / "a.lmb").string()));
    window().close();
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(store.values["Tavex2/Startup/Lastfile"], (folder / "a.lmb").string());
}

TEST_F(MainWindowTest, ClosingDuringACollectionAsksTheStopQuestionFirst) {
    start({"Duration=3000"});
    button("Collect").click();
    WhenDialogOpens no("MessageBox", [](QWidget& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Stop Current Trial"));
        press(box, QMessageBox::No);
    });
    window().close();
    ASSERT_TRUE(no.opened());
    EXPECT_TRUE(window().isVisible());
    WhenDialogOpens yes("MessageBox", [](QWidget& box) { press(box, QMessageBox::Yes); });
    window().close();
    ASSERT_TRUE(yes.opened());
    EXPECT_FALSE(window().isVisible());
}

TEST_F(MainWindowTest, AFailedSaveSaysWhyAndKeepsTheTrialUnsaved) {
    start();
    collect();
    WhenDialogOpens message("MessageBox", [&](QWidget& box) {
        const QString text = dynamic_cast<QMessageBox&>(box).text();
        EXPECT_TRUE(text.startsWith(QLatin1String("Error saving /proc/trial.lmb"))) << text.toStdString();
        press(box, QMessageBox::Ok);
    });
    saveAs(QStringLiteral("/proc/trial.lmb")); // nobody may write there
    EXPECT_TRUE(message.opened());
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Trial0001 (Unsaved)"));
}

// Files ---------------------------------------------------------------------------------------------------------------

TEST_F(MainWindowTest, ASavedTrialIsOpenedAgain) {
    start();
    collect();
    saveAs(QString::fromStdString((folder / "First.lmb").string()));
    collect();
    const QString second = window().windowTitle();
    WhenDialogOpens open("CommonDialog", [&](QWidget& shown) {
        EXPECT_EQ(shown.windowTitle(), QStringLiteral("Open"));
        enterFileName(shown, QString::fromStdString((folder / "First.lmb").string()));
    });
    // The question about the unsaved trial, then the message that the file was read.
    int messages = 0;
    QTimer answering;
    answering.setInterval(5);
    QObject::connect(&answering, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) return;
        ++messages;
        EXPECT_TRUE(box->text().startsWith(messages == 1 ? QLatin1String("Your last trial was NOT saved.")
                                                         : QLatin1String("File read successfully.")));
        box->button(messages == 1 ? QMessageBox::No : QMessageBox::Ok)->click();
    });
    answering.start();
    action("mnuOpenLumidor2").trigger();
    ASSERT_TRUE(open.opened());
    EXPECT_EQ(messages, 2);
    EXPECT_EQ(window().windowTitle(), QStringLiteral("First"));
    EXPECT_EQ(status(), QStringLiteral("Opened file: First.lmb"));
    EXPECT_EQ(plots("cwG"), 2);
    EXPECT_NE(second, window().windowTitle());
}

TEST_F(MainWindowTest, FilesNamedAtTheStartOpenOneAfterTheOther) {
    start();
    collect();
    saveAs(QString::fromStdString((folder / "Saved.lmb").string()));
    for (const char* name : {"First.lmb", "Second.lmb"})
        std::filesystem::copy_file(folder / "Saved.lmb", folder / name);
    startWith({.board = "simulator", .files = {folder / "First.lmb", folder / "Second.lmb"}});
    EXPECT_TRUE(waitFor([this] { return window().windowTitle() == QStringLiteral("Second"); }));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "no box a file when there are several";
    EXPECT_GT(plots("cwG"), 0);
    Q_EMIT child<QMenu>("mnuFile").aboutToShow();
    EXPECT_TRUE(action("mnuRecent_0").text().contains(QLatin1String("Second.lmb")));
    EXPECT_TRUE(action("mnuRecent_1").text().contains(QLatin1String("First.lmb")));
}

TEST_F(MainWindowTest, TheSpreadsheetItemWaitsForAFile) {
    start();
    auto& view = child<QMenu>("mnuView");
    Q_EMIT view.aboutToShow();
    EXPECT_FALSE(action("mnuDigital").isEnabled());
    collect();
    saveAs(QString::fromStdString((folder / "First.lmb").string()));
    WhenDialogOpens read("MessageBox", [](QWidget& box) { press(box, QMessageBox::Ok); });
    window().openFiles({folder / "First.lmb"});
    ASSERT_TRUE(read.opened());
    Q_EMIT view.aboutToShow();
    ASSERT_TRUE(action("mnuDigital").isEnabled());
    WhenDialogOpens told("MessageBox", [](QWidget& box) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(box).text(),
                  QStringLiteral("You must Export your current data first to a tab-delimited file."));
        press(box, QMessageBox::Ok);
    });
    action("mnuDigital").trigger();
    EXPECT_TRUE(told.opened());
}

TEST_F(MainWindowTest, ALongMessageLeavesTheBoardsNameInSight) {
    store.values["Tavex2/Startup/Recentfiles"] = "/" + std::string(500, 'w');
    start();
    action("mnuRecent_0").trigger(); // which is not there any more
    auto& board = child<QLabel>("StatusPanel2");
    ASSERT_TRUE(waitFor([&] { return child<QLabel>("StatusPanel1").toolTip().size() > 500; }));
    QApplication::processEvents();
    EXPECT_LE(board.mapTo(&window(), QPoint(board.width(), 0)).x(), window().width());
    EXPECT_EQ(board.text(), QStringLiteral("Device: Simulated board"));
    EXPECT_GE(board.width(), board.fontMetrics().horizontalAdvance(board.text()));
}

TEST_F(MainWindowTest, TheFirstStartTellsAboutTheSimulatedBoard) {
    start({"Duration=0.05", "DIOMask=0"}, std::nullopt);
    EXPECT_TRUE(status().startsWith(QLatin1String("The simulated board is in use"))) << status().toStdString();
    collect();
    EXPECT_FALSE(status().startsWith(QLatin1String("The simulated board is in use"))) << "until something happens";
    saveAs(QString::fromStdString((folder / "First.lmb").string()));
    window().close(); // which stores the settings
    start({}, std::nullopt);
    EXPECT_EQ(status(), QStringLiteral("Ready"));
}

TEST_F(MainWindowTest, TheChosenSpreadsheetCarriesTheMark) {
    start();
    const auto marks = [this] {
        return std::vector{action("mnuSpreadsheet_0").isChecked(), action("mnuSpreadsheet_1").isChecked(),
                           action("mnuSpreadsheet_2").isChecked()};
    };
    EXPECT_EQ(marks(), (std::vector{true, false, false}));
    action("mnuSpreadsheet_1").trigger();
    EXPECT_EQ(marks(), (std::vector{false, true, false}));
    WhenDialogOpens dialog("CommonDialog", [](QWidget& shown) {
        EXPECT_EQ(shown.windowTitle(), QStringLiteral("Select a spreadsheet."));
        shown.close();
    });
    action("mnuSpreadsheet_2").trigger();
    ASSERT_TRUE(dialog.opened());
    EXPECT_EQ(marks(), (std::vector{false, true, false})) << "cancelled";
}

TEST_F(MainWindowTest, TheSiblingProgramWaitsUntilItIsThere) {
    start();
    auto& analyse = child<QMenu>("mnuAnalyse");
    Q_EMIT analyse.aboutToShow();
    EXPECT_FALSE(action("mnuProgram_0").isEnabled());
    EXPECT_TRUE(action("mnuProgram_1").isEnabled());
    std::ofstream(folder / "Lumidor2.exe") << "x";
    ASSERT_TRUE(store.write("Lumidor2", "Startup", "Progdir", folder.path().string()));
    Q_EMIT analyse.aboutToShow();
    EXPECT_TRUE(action("mnuProgram_0").isEnabled());
}

TEST_F(MainWindowTest, TheAboutBoxTellsTheVersionAndTheSystem) {
    start();
    WhenDialogOpens about("frmAbout", [](QWidget& form) {
        EXPECT_EQ(form.windowTitle(), QStringLiteral("About Tavex2"));
        EXPECT_EQ(form.findChild<QLabel*>(QStringLiteral("lblTitle"))->text(), QStringLiteral("Tavex2"));
        EXPECT_TRUE(
            form.findChild<QLabel*>(QStringLiteral("lblVersion"))->text().startsWith(QLatin1String("Version ")));
        const QString description = form.findChild<QLabel*>(QStringLiteral("lblDescription"))->text();
        EXPECT_TRUE(description.startsWith(QLatin1String("Analog Data Acquisition System\nProgrammers:")));
        WhenDialogOpens information("frmSystemInformation", [](QWidget& shown) {
            shown.findChild<QAbstractButton*>(QStringLiteral("cmdCopy"))->click();
            shown.close();
        });
        form.findChild<QAbstractButton*>(QStringLiteral("cmdSysInfo"))->click();
        EXPECT_TRUE(information.opened());
        const QString copied = QApplication::clipboard()->text();
        EXPECT_TRUE(copied.contains(QLatin1String("\nDevice 1: Simulated board\n"))) << copied.toStdString();
        EXPECT_TRUE(copied.contains(QLatin1String("\nSettings: in memory")));
        form.findChild<QAbstractButton*>(QStringLiteral("cmdOK"))->click();
    });
    action("mnuAbout_0").trigger();
    EXPECT_TRUE(about.opened());
}

TEST_F(MainWindowTest, TheFileMenuListsRecentFiles) {
    start();
    auto& file = child<QMenu>("mnuFile");
    auto& recent = child<QMenu>("mnuRecent");
    EXPECT_FALSE(recent.isEnabled());
    for (const char* name : {"First", "Second"}) {
        collect();
        saveAs(QString::fromStdString((folder / name).string() + ".lmb"));
    }
    Q_EMIT file.aboutToShow();
    EXPECT_TRUE(recent.isEnabled());
    ASSERT_EQ(recent.actions().size(), 2);
    EXPECT_EQ(recent.actions()[0]->text(), QStringLiteral("&1  Second.lmb"));
    EXPECT_EQ(recent.actions()[1]->toolTip(), QString::fromStdString((folder / "First.lmb").string()));

    WhenDialogOpens read("MessageBox", [](QWidget& box) { press(box, QMessageBox::Ok); });
    action("mnuRecent_1").trigger();
    ASSERT_TRUE(read.opened());
    EXPECT_EQ(window().windowTitle(), QStringLiteral("First"));
    Q_EMIT file.aboutToShow();
    EXPECT_EQ(recent.actions()[0]->text(), QStringLiteral("&1  First.lmb"));

    std::filesystem::remove(folder / "Second.lmb");
    action("mnuRecent_1").trigger();
    EXPECT_TRUE(status().endsWith(QLatin1String("Second.lmb is not there any more; it is off the list now.")));
    EXPECT_EQ(window().windowTitle(), QStringLiteral("First"));
    Q_EMIT file.aboutToShow();
    EXPECT_EQ(recent.actions().size(), 1);

    window().close();
    start(); // with the same settings store
    EXPECT_EQ(child<QMenu>("mnuRecent").actions().size(), 1);
}

TEST_F(MainWindowTest, AFileDroppedOnTheWindowIsOpened) {
    start();
    collect();
    saveAs(QString::fromStdString((folder / "Dropped.lmb").string()));
    collect();
    saveAs(QString::fromStdString((folder / "Other.lmb").string()));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString((folder / "Dropped.lmb").string()))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    WhenDialogOpens read("MessageBox", [](QWidget& box) { press(box, QMessageBox::Ok); });
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &drop);
    ASSERT_TRUE(waitFor([&] { return read.opened() && window().windowTitle() == QLatin1String("Dropped"); }));
}

TEST_F(MainWindowTest, TablesAreExportedFromTheFileMenu) {
    start();
    collect();
    for (const auto& [command, name] : {std::pair{"mnuTab", "t.tab"}, std::pair{"mnuLumidor", "t.lma"}}) {
        WhenDialogOpens dialog("CommonDialog", [&](QWidget& shown) {
            enterFileName(shown, QString::fromStdString((folder / name).string()));
        });
        action(command).trigger();
        ASSERT_TRUE(dialog.opened());
        EXPECT_GT(bytesOf(folder / name).size(), 500U);
        EXPECT_TRUE(status().contains(QLatin1String(name))) << status().toStdString();
    }
}

TEST_F(MainWindowTest, AutosaveWritesATableWhereTheSetupSaysSo) {
    start({"Duration=0.05", "DIOMask=0", "SaveType=1"});
    action("mnuOption_0").trigger();
    action("mnuAutosaveWithoutAsking").trigger();
    collect();
    EXPECT_TRUE(fs::exists(folder / "Trial0001.tab"));
    EXPECT_FALSE(fs::exists(folder / "Trial0001.lmb"));
}

} // namespace
} // namespace tavex2::test
