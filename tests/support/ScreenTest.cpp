#include "support/Screen.h"

#include "support/WindowTesting.h"

#include <QCheckBox>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QStatusBar>
#include <QTextEdit>
#include <gtest/gtest-spi.h>

namespace tavex2::test {
namespace {

/// Acts and reads in a small window of its own.
class ScreenTest : public testing::Test {
  protected:
    ScreenTest() {
        auto* middle = new QWidget;
        window.setCentralWidget(middle);
        label = named<QLabel>(middle, "lblVolts", {10, 10, 100, 20});
        label->setText(QStringLiteral("5 V"));
        button = named<QCheckBox>(middle, "chkRectify", {10, 40, 100, 20});
        button->setText(QStringLiteral("&Rectify && sum"));
        window.resize(300, 200);
        window.show();
    }
    void SetUp() override {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    template <class Widget>
    Widget* named(QWidget* parent, const char* name, const QRect& place) {
        auto* made = new Widget(parent);
        made->setObjectName(QLatin1String(name));
        made->setGeometry(place);
        made->show();
        return made;
    }
    QWidget* middle() { return window.centralWidget(); }

    /// Lets `use` do something that has to fail the test with this text.
    static void expectFailure(const std::function<void()>& use, const char* text) {
        testing::TestPartResultArray results;
        {
            const testing::ScopedFakeTestPartResultReporter reporter(
                testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
            use();
        }
        ASSERT_EQ(results.size(), 1) << text;
        EXPECT_NE(std::string(results.GetTestPartResult(0).message()).find(text), std::string::npos)
            << results.GetTestPartResult(0).message();
    }
    void expectUnreadable(const char* reason) {
        EXPECT_FALSE(screen.shows("lblVolts"));
        expectFailure([this] { EXPECT_EQ(screen.text("lblVolts"), ""); }, reason);
    }

    QMainWindow window;
    QLabel* label = nullptr;
    QCheckBox* button = nullptr;
    const Screen screen{window};
};

TEST_F(ScreenTest, ReadsWhatControlsShow) {
    EXPECT_EQ(screen.text("lblVolts"), "5 V");
    EXPECT_EQ(screen.text("chkRectify"), "Rectify & sum");
    label->setText(QStringLiteral("<b>6</b> V"));
    EXPECT_EQ(screen.text("lblVolts"), "6 V");
    window.setWindowTitle(QStringLiteral("Trial0001"));
    EXPECT_EQ(screen.title(), "Trial0001");
}

TEST_F(ScreenTest, ReadsOfALongTextWhatIsScrolledIntoView) {
    auto* text = named<QTextEdit>(middle(), "txtPage", {10, 70, 200, 60});
    QString lines;
    for (int line = 0; line < 100; ++line)
        lines += QStringLiteral("line %1\n").arg(line);
    text->setPlainText(lines);
    EXPECT_TRUE(screen.text("txtPage").starts_with("line 0\n")) << screen.text("txtPage");
    EXPECT_EQ(screen.text("txtPage").find("line 50"), std::string::npos);
    text->moveCursor(QTextCursor::End);
    EXPECT_NE(screen.text("txtPage").find("line 99"), std::string::npos);
    EXPECT_EQ(screen.text("txtPage").find("line 0\n"), std::string::npos);
}

TEST_F(ScreenTest, AHiddenLabelFailsTheTest) {
    label->hide();
    expectUnreadable("it is hidden");
    label->show();
    EXPECT_EQ(screen.text("lblVolts"), "5 V");
    middle()->hide();
    expectUnreadable("it is hidden");
}

TEST_F(ScreenTest, ALabelUnderAnotherControlFailsTheTestAlsoWhereClicksWouldPass) {
    auto* cover = named<QLabel>(middle(), "lblCover", {0, 0, 200, 35});
    expectUnreadable("covered by lblCover");
    cover->setAttribute(Qt::WA_TransparentForMouseEvents);
    expectUnreadable("covered by lblCover");
    cover->setGeometry(100, 0, 100, 35); // its right end only
    expectUnreadable("covered by lblCover");
    cover->lower();
    EXPECT_EQ(screen.text("lblVolts"), "5 V");
}

TEST_F(ScreenTest, ALabelOutsideItsWindowOrCutOffOrWithoutExtentFailsTheTest) {
    label->move(250, 10);
    expectUnreadable("beyond its window");
    label->setGeometry(10, 10, 100, 0);
    expectUnreadable("it has no extent");
    auto* area = named<QScrollArea>(middle(), "area", {150, 10, 50, 50});
    label->setParent(area->viewport());
    label->setGeometry(20, 10, 100, 20);
    label->show();
    expectUnreadable("it is cut off");
}

TEST_F(ScreenTest, WhatDoesNotExistOrShowsNoTextFailsTheTest) {
    expectFailure([this] { (void)screen.text("lblAmperes"); }, "no such control");
    named<QWidget>(middle(), "picture", {10, 70, 20, 20});
    expectFailure([this] { (void)screen.text("picture"); }, "shows no text");
    named<QLabel>(middle(), "lblVolts", {10, 100, 100, 20});
    expectFailure([this] { (void)screen.text("lblVolts"); }, "two of that name");
}

TEST_F(ScreenTest, ClicksWhatAUserCouldClick) {
    screen.click("chkRectify");
    EXPECT_TRUE(button->isChecked());
    button->setEnabled(false);
    expectFailure([this] { screen.click("chkRectify"); }, "it is disabled");
    button->setEnabled(true);
    auto* cover = named<QWidget>(middle(), "cover", {0, 35, 200, 30});
    expectFailure([this] { screen.click("chkRectify"); }, "covered by cover");
    EXPECT_TRUE(button->isChecked());
    cover->hide();
    screen.click("chkRectify");
    EXPECT_FALSE(button->isChecked());
}

TEST_F(ScreenTest, ChoosesFromMenusByTheTextsThatTheyShow) {
    QMenu* view = window.menuBar()->addMenu(QStringLiteral("&View"));
    QMenu* graphs = view->addMenu(QStringLiteral("&Graphs"));
    QAction* large = graphs->addAction(QStringLiteral("&Large\tCtrl+L"));
    large->setCheckable(true);
    QAction* off = view->addAction(QStringLiteral("Average"));
    off->setEnabled(false);
    screen.choose({"View", "Graphs", "Large"});
    EXPECT_TRUE(large->isChecked());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(screen.isChecked({"View", "Graphs", "Large"}));
    EXPECT_TRUE(screen.isOffered({"View", "Graphs", "Large"}));
    EXPECT_FALSE(screen.isOffered({"View", "Average"}));
    expectFailure([this] { screen.choose({"View", "Average"}); }, "it is disabled");
    expectFailure([this] { screen.choose({"View", "Small"}); }, "no \"Small\" in View");
    expectFailure([this] { screen.choose({"Edit", "Undo"}); }, "no \"Edit\" in the menu bar");
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(ScreenTest, AStatusTipCountsAsWhatTheBarSaysWhereItHidesThePanel) {
    auto* panel = new QLabel(QStringLiteral("Pausing"));
    panel->setObjectName(QStringLiteral("StatusPanel1"));
    window.statusBar()->addWidget(panel, 1);
    button->setStatusTip(QStringLiteral("Rectifies"));
    screen.pointAt("lblVolts");
    EXPECT_EQ(screen.statusText(), "Pausing");
    screen.pointAt("chkRectify");
    EXPECT_EQ(screen.statusText(), "Rectifies");
    expectFailure([this] { (void)screen.text("StatusPanel1"); }, "it is hidden");

    window.statusBar()->removeWidget(panel);
    window.statusBar()->addPermanentWidget(panel, 1);
    panel->show();
    screen.pointAt("lblVolts");
    screen.pointAt("chkRectify");
    QApplication::processEvents();
    EXPECT_EQ(screen.statusText(), "Pausing") << "a permanent panel leaves no room for a tip";
}

TEST_F(ScreenTest, KeysGoToTheControlThatHasThem) {
    auto* edit = named<QLineEdit>(middle(), "txtName", {10, 70, 100, 20});
    screen.click("txtName");
    typeText(QStringLiteral("Ton 1,5 µV"));
    EXPECT_EQ(screen.text("txtName"), "Ton 1,5 µV");
    pressKey(Qt::Key_Backspace);
    EXPECT_EQ(edit->text(), QStringLiteral("Ton 1,5 µ"));
    window.hide();
    expectFailure([] { pressKey(Qt::Key_A); }, "no window has the keys");
}

TEST_F(ScreenTest, AModalDialogBlocksTheWindowUnderIt) {
    QDialog dialog(&window);
    dialog.setObjectName(QStringLiteral("frmScale"));
    WhenDialogOpens drive("frmScale", [&](QWidget& shown) {
        screen.click("chkRectify");
        EXPECT_FALSE(button->isChecked()) << "as for a user";
        shown.close();
    });
    dialog.exec();
    EXPECT_TRUE(drive.opened());
}

} // namespace
} // namespace tavex2::test
