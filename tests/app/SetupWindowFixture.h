#pragma once

#include "acquisition/SetupFile.h"
#include "app/MainWindowFixture.h"
#include "platform/qt/CWNumEdit.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextDocument>

namespace tavex2::test {

/// The setup dialog and the Options menu, driven through their widgets.
class SetupWindowTest : public MainWindowTest {
  protected:
    void inDialog(const std::function<void(QWidget& dialog)>& drive, const char* command = "mnuEdit_1") {
        WhenDialogOpens dialog("frmProperties", drive);
        action(command).trigger();
        ASSERT_TRUE(dialog.opened());
    }

    template <class Widget>
    static Widget& in(QWidget& dialog, const char* name) {
        auto* found = dialog.findChild<Widget*>(QLatin1String(name));
        if (found == nullptr) throw std::runtime_error(std::string("no control named ") + name);
        return *found;
    }
    static CWNumEdit& box(QWidget& dialog, const char* name) { return in<CWNumEdit>(dialog, name); }
    static void click(QWidget& dialog, const char* name) { in<QAbstractButton>(dialog, name).click(); }
    static void type(QWidget& dialog, const char* name, const char* text) {
        CWNumEdit& edit = box(dialog, name);
        edit.setFocus();
        edit.selectAll();
        QTest::keyClicks(&edit, QLatin1String(text));
        in<QAbstractButton>(dialog, "cmdOK").setFocus();
    }
    /// Clicks into a box and types over what it holds.
    static void typeOver(QWidget& dialog, const char* name, const char* text) {
        auto& edit = *box(dialog, name).findChild<QLineEdit*>();
        QTest::mouseClick(&edit, Qt::LeftButton);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(dialog.focusWidget(), QLatin1String(text));
    }
    static void pressKey(QWidget& dialog, Qt::Key key) { QTest::keyClick(dialog.focusWidget(), key); }
    static void pressOK(QWidget& dialog) { QTest::mouseClick(&in<QWidget>(dialog, "cmdOK"), Qt::LeftButton); }
    static QColor background(QWidget& dialog, const char* name) {
        return box(dialog, name).findChild<QLineEdit*>()->palette().color(QPalette::Base);
    }
    static std::string line(QWidget& dialog) { return in<QLabel>(dialog, "lblMeaning").text().toStdString(); }

    static QString deviceName(QWidget& dialog) { return in<QPlainTextEdit>(dialog, "txtDevice").toPlainText(); }
    /// The line without its marks for bold letters.
    static std::string plainLine(QWidget& dialog) {
        QTextDocument text;
        text.setHtml(in<QLabel>(dialog, "lblMeaning").text());
        return text.toPlainText().toStdString();
    }

    /// The settings as a file saved from the menu holds them.
    AcqSettings saved() {
        const std::filesystem::path file = folder / "check.set";
        std::filesystem::remove(file);
        WhenDialogOpens dialog("CommonDialog",
                               [&](QWidget& shown) { enterFileName(shown, QString::fromStdString(file.string())); });
        action("mnuOption_6").trigger();
        EXPECT_TRUE(dialog.opened());
        AcqSettings settings;
        EXPECT_TRUE(readSetupFile(file, settings));
        return settings;
    }
    std::filesystem::path write(const char* name, const std::string& bytes) {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return folder / name;
    }
    void load(const std::filesystem::path& file) {
        WhenDialogOpens dialog("CommonDialog",
                               [&](QWidget& shown) { enterFileName(shown, QString::fromStdString(file.string())); });
        action("mnuOption_5").trigger();
        EXPECT_TRUE(dialog.opened());
    }
};

} // namespace tavex2::test
