#include "platform/qt/CenterForm.h"

#include <QSignalSpy>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <gtest/gtest.h>

namespace tavex2 {
namespace {

TEST(CenterForm, PutsAWindowOverTheMiddleOfAnother) {
    QWidget parent;
    parent.setGeometry(300, 200, 600, 400);
    QWidget child(&parent, Qt::Window);
    child.resize(100, 50);
    CenterForm(&child, &parent);
    EXPECT_LE((child.frameGeometry().center() - parent.frameGeometry().center()).manhattanLength(), 2);
}

TEST(CenterForm, TellsTheDesktopThatAWindowBelongsAtTheOrigin) {
    QWidget parent;
    parent.setGeometry(-2000, -1500, 600, 400);
    QWidget child(&parent, Qt::Window);
    child.move(0, 0);
    child.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&child));
    QSignalSpy told(child.windowHandle(), &QWindow::xChanged);
    CenterForm(&child, &parent);
    EXPECT_TRUE(QTest::qWaitFor([&told] { return told.count() > 0; })) << "else the desktop finds a place of its own";
    EXPECT_EQ(child.pos(), QPoint(0, 0));
}

TEST(CenterForm, LeavesWhatIsNoWindow) {
    QWidget parent;
    QWidget child(&parent);
    child.move(7, 8);
    CenterForm(&child, &parent);
    EXPECT_EQ(child.pos(), QPoint(7, 8));
}

} // namespace
} // namespace tavex2
