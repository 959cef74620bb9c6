#pragma once

#include <QApplication>
#include <QDeadlineTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>

namespace tavex2::test {

/// Lets the window work until `condition` holds; False when it does not within the time.
inline bool waitFor(const std::function<bool()>& condition, int milliseconds = 20000) {
    return QTest::qWaitFor(condition, milliseconds);
}

/// Whether a user could work in a window by now: it is on the screen and active, and the control that is to have the
/// keys has them. Before that, a key goes nowhere and a control that is left is not told so.
inline bool readyForInput(const QWidget& window) {
    const QWindow* shown = window.windowHandle();
    if (shown == nullptr || !shown->isExposed() || !window.isActiveWindow()) return false;
    return window.focusWidget() == nullptr || QApplication::focusWidget() == window.focusWidget();
}

/// Runs `drive` in a modal window of that object name as soon as a user could work in it. A window that does not come,
/// or another one in its place, fails the test; the other one is closed, so that the test ends.
class WhenDialogOpens {
  public:
    WhenDialogOpens(const char* objectName, std::function<void(QWidget&)> drive)
        : m_name(QLatin1String(objectName)), m_drive(std::move(drive)), m_giveUp(std::chrono::seconds(20)) {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { look(); });
        m_timer.start();
    }

    bool opened() const { return m_opened; }

  private:
    void look() {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog != nullptr && dialog->objectName() == m_name && readyForInput(*dialog)) {
            m_timer.stop();
            m_opened = true;
            m_drive(*dialog);
        } else if (m_giveUp.hasExpired() && dialog != nullptr) {
            m_timer.stop();
            ADD_FAILURE() << "waited for " << m_name.toStdString() << "; open is "
                          << dialog->objectName().toStdString();
            dialog->close();
        }
    }

    QString m_name;
    std::function<void(QWidget&)> m_drive;
    QDeadlineTimer m_giveUp;
    QTimer m_timer;
    bool m_opened = false;
};

/// Presses a button of a message box.
inline void press(QWidget& messageBox, QMessageBox::StandardButton button) {
    auto* box = qobject_cast<QMessageBox*>(&messageBox);
    QTest::mouseClick(box->button(button), Qt::LeftButton);
}

/// Clicks twice as a desktop reports it: press and release, then the second press as a double click, and its release.
inline void doubleClick(QWidget& widget, const QPoint& place) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, place);
    QTest::mouseDClick(&widget, Qt::LeftButton, {}, place);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, place);
}

/// Types a name into a file dialog and confirms it. While the field has the focus, the folder's listing, which comes
/// when it is ready, does not write the proposed name over the typed one.
inline void enterFileName(QWidget& fileDialog, const QString& name) {
    auto* edit = fileDialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    edit->setFocus();
    if (!waitFor([edit] { return edit->hasFocus(); })) return;
    edit->setText(name);
    QTest::keyClick(edit, Qt::Key_Return);
}

} // namespace tavex2::test
