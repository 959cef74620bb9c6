#include "app/MainWindowFixture.h"
#include "help/HelpCommands.h"
#include "support/Screen.h"

#include <QAbstractSpinBox>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QTextBrowser>

#include <filesystem>

namespace tavex2::test {
namespace {

/// Help as a user asks for it, with the manual that the build made.
class HelpWindowTest : public MainWindowTest {
  protected:
    static QWidget* help() {
        for (QWidget* each : QApplication::topLevelWidgets())
            if (each->objectName() == QLatin1String("frmHelp") && each->isVisible()) return each;
        return nullptr;
    }
    template <class Widget>
    static Widget& inHelp(const char* name) {
        return *help()->findChild<Widget*>(QLatin1String(name));
    }
    /// What stands at the top of the page that the user sees: the first three lines that are not empty. On a page that
    /// was not opened further down, the heading is among them.
    static QStringList topOfPage() {
        if (help() == nullptr) return {QStringLiteral("no help")};
        EXPECT_TRUE(QTest::qWaitForWindowExposed(help()));
        const QString text = QString::fromStdString(Screen(*help()).text("txtPage"));
        return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(0, 3);
    }
    static void expectAtTop(const char* line) {
        EXPECT_TRUE(topOfPage().contains(QLatin1String(line))) << line << " is not in:\n"
                                                               << topOfPage().join(QLatin1Char('\n')).toStdString();
    }
    static std::string listed(const char* list, int row) {
        return inHelp<QListWidget>(list).item(row)->text().toStdString();
    }

    /// Help can be used although a dialog waits for an answer. The click goes through the system's window, which a
    /// dialog would block.
    static void turnPageAndClose() {
        auto& list = inHelp<QListWidget>("lstContents");
        const QPoint second = list.visualItemRect(list.item(1)).center();
        QTest::mouseClick(help()->windowHandle(), Qt::LeftButton, {}, list.viewport()->mapTo(help(), second));
        expectAtTop("The first five minutes");
        help()->activateWindow();
        EXPECT_TRUE(waitFor([] { return help()->isActiveWindow(); }));
        QTest::keyClick(help(), Qt::Key_Escape);
        EXPECT_TRUE(waitFor([] { return help() == nullptr; }));
    }

    /// The page that F1 opens while a dialog is open; in it, or in one of its controls.
    void expectHelpInDialog(const char* command, const char* dialogName, const char* expected,
                            const char* control = nullptr) {
        SCOPED_TRACE(dialogName);
        WhenDialogOpens dialog(dialogName, [&](QWidget& shown) {
            QWidget* focus = control != nullptr ? shown.findChild<QWidget*>(QLatin1String(control)) : nullptr;
            if (focus != nullptr) focus->setFocus();
            EXPECT_TRUE(waitFor([&] { return focus == nullptr || focus->hasFocus(); }));
            QTest::keyClick(focus != nullptr ? focus : &shown, Qt::Key_F1);
            expectAtTop(expected);
            if (help() != nullptr) turnPageAndClose();
            qobject_cast<QDialog*>(&shown)->reject();
        });
        action(command).trigger();
        EXPECT_TRUE(dialog.opened());
    }
};

TEST_F(HelpWindowTest, ContentsAndTheToolBarOpenTheTableOfContents) {
    start();
    action("mnuContents").trigger();
    expectAtTop("Using Tavex2");
    EXPECT_EQ(inHelp<QTabWidget>("tabHelp").currentIndex(), 0);
    help()->close();
    button("Help").click();
    expectAtTop("Using Tavex2");
}

TEST_F(HelpWindowTest, TheContentsMarkThePageThatIsShown) {
    start();
    action("mnuContents").trigger();
    QTextBrowser& shown = inHelp<QTextBrowser>("txtPage");
    for (const auto& [link, marked] :
         {std::pair("setup.html", "The setup"), std::pair("scale.html#cwnLeft", "The scale dialog")}) {
        shown.setSource(shown.source().resolved(QUrl(QLatin1String(link))));
        EXPECT_EQ(inHelp<QListWidget>("lstContents").currentItem()->text().toStdString(), marked) << link;
    }
}

TEST_F(HelpWindowTest, ASearchShowsThePageWithTheWords) {
    start();
    action("mnuSearch").trigger();
    EXPECT_EQ(inHelp<QTabWidget>("tabHelp").currentIndex(), 2);
    auto& query = inHelp<QLineEdit>("txtSearch");
    ASSERT_TRUE(waitFor([&] { return query.hasFocus(); }));
    QTest::keyClicks(&query, QStringLiteral("hysteresis xylophone"));
    EXPECT_EQ(listed("lstHits", 0), "No page holds all of these words.");
    query.clear();
    QTest::keyClicks(&query, QStringLiteral("simpson integral"));
    EXPECT_TRUE(listed("lstHits", 0).starts_with("Measuring between cursors\n"));
    QTest::keyClick(&query, Qt::Key_Return);
    expectAtTop("Measuring between cursors");
    EXPECT_GE(inHelp<QTextBrowser>("txtPage").extraSelections().size(), 2) << "the words are marked";
}

TEST_F(HelpWindowTest, TheIndexLeadsToPages) {
    start();
    action("mnuContents").trigger();
    inHelp<QTabWidget>("tabHelp").setCurrentIndex(1);
    auto& keyword = inHelp<QLineEdit>("txtIndex");
    QTest::keyClicks(&keyword, QStringLiteral("pre-trigger"));
    QTest::keyClick(&keyword, Qt::Key_Return);
    expectAtTop("The setup");
}

TEST_F(HelpWindowTest, F1OpensThePageOfTheWindowWithTheFocus) {
    start();
    QTest::keyClick(&window(), Qt::Key_F1);
    expectAtTop("The main window");
    help()->close();

    collect();
    action("mnuOverlay").trigger();
    expectHelpInDialog("mnuEdit_0", "frmComments", "Comments");
    expectHelpInDialog("mnuEdit_2", "frmLabels", "Labels and units");
    expectHelpInDialog("mnuEdit_1", "frmProperties", "Duration", "cwnDuration");
    expectHelpInDialog("mnuScale", "frmScale", "volts", "optVolts_1");
    expectHelpInDialog("mnuInfo", "frmInfo", "Measuring between cursors");
    expectHelpInDialog("mnuViewOverlay", "frmOverlay", "Overlaying trials");
    expectHelpInDialog("mnuAbout_0", "frmAbout", "About, help and a newer version");

    start({"Duration=3000", "DIOMask=0"});
    button("Collect").click();
    expectHelpInDialog("tbStop", "MessageBox", "Messages and what to do");
    WhenDialogOpens question("MessageBox", [](QWidget& box) { press(box, QMessageBox::Yes); });
    button("Stop").click();
    EXPECT_TRUE(question.opened());
}

TEST_F(HelpWindowTest, HelpThatIsOpenStaysUsableWhenADialogOpens) {
    start();
    action("mnuContents").trigger();
    WhenDialogOpens dialog("frmScale", [&](QWidget& shown) {
        turnPageAndClose();
        qobject_cast<QDialog*>(&shown)->reject();
    });
    action("mnuScale").trigger();
    EXPECT_TRUE(dialog.opened());
}

TEST_F(HelpWindowTest, F1InAControlGoesToItsParagraph) {
    start();
    WhenDialogOpens dialog("frmProperties", [&](QWidget& shown) {
        auto* rate = shown.findChild<QWidget*>(QStringLiteral("cwnRate"));
        rate->setFocus();
        QTest::keyClick(rate, Qt::Key_F1);
        expectAtTop("Rate");
        qobject_cast<QDialog*>(&shown)->reject();
    });
    action("mnuEdit_1").trigger();
    EXPECT_TRUE(dialog.opened());
}

TEST_F(HelpWindowTest, EveryControlOfTheSetupAndScaleDialogsSaysWhatItIsFor) {
    start();
    for (const auto& [command, name] : {std::pair("mnuEdit_1", "frmProperties"), std::pair("mnuScale", "frmScale")}) {
        int controls = 0;
        WhenDialogOpens dialog(name, [&](QWidget& shown) {
            for (QWidget* each : shown.findChildren<QWidget*>()) {
                const bool control = qobject_cast<QAbstractButton*>(each) != nullptr ||
                                     qobject_cast<QLineEdit*>(each) != nullptr ||
                                     qobject_cast<QAbstractSpinBox*>(each) != nullptr;
                if (!control || each->objectName().startsWith(QLatin1String("qt_"))) continue;
                ++controls;
                EXPECT_GT(each->whatsThis().size(), 15) << name << " " << each->objectName().toStdString();
            }
            auto* label = shown.findChild<QLabel*>(QStringLiteral("lblUpper"));
            EXPECT_EQ(label->whatsThis(), label->buddy()->whatsThis());
            qobject_cast<QDialog*>(&shown)->reject();
        });
        action(command).trigger();
        EXPECT_TRUE(dialog.opened());
        EXPECT_GT(controls, 15);
    }
}

/// What the manual holds, beside what the program has.
class ManualContentsTest : public MainWindowTest {
  protected:
    const Manual manual = Manual::load(helpFolder(QCoreApplication::applicationDirPath().toStdString())).value();
};

TEST_F(ManualContentsTest, EveryWindowHasAPage) {
    int windows = 0;
    for (const auto& file : std::filesystem::recursive_directory_iterator(TAVEX2_ROOT "/src")) {
        const std::string name = file.path().stem().string();
        if (file.path().extension() != ".h" || !name.starts_with("frm")) continue;
        ++windows;
        EXPECT_NE(manual.pageOfWindow(name), nullptr) << name;
    }
    EXPECT_GE(windows, 10);
}

TEST_F(ManualContentsTest, EveryCommandOfTheMenusIsTold) {
    start();
    std::string all;
    for (const ManualPage& page : manual.pages())
        all += page.text + ' ';
    const QString text = QString::fromStdString(all);
    int commands = 0;
    for (const QAction* each : window().findChildren<QAction*>()) {
        if (!each->objectName().startsWith(QLatin1String("mnu")) || each->isSeparator()) continue;
        ++commands;
        QString name = each->text();
        name.replace(QLatin1String("&&"), QLatin1String("\n")).remove(QLatin1Char('&'));
        name.replace(QLatin1Char('\n'), QLatin1Char('&')).remove(QLatin1String("..."));
        EXPECT_TRUE(text.contains(name.trimmed())) << name.toStdString();
    }
    EXPECT_GT(commands, 50);
}

} // namespace
} // namespace tavex2::test
