#pragma once

#include <QApplication>
#include <QDeadlineTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace tavex2::test {

/// Lets the window work until `condition` holds; False when it does not within the time.
inline bool waitFor(const std::function<bool()>& condition, int milliseconds = 20000) {
    return QTest::qWaitFor(condition, milliseconds);
}

/// Runs `drive` as soon as a modal window of that object name is open, then checks that it was.
class WhenDialogOpens {
  public:
    WhenDialogOpens(const char* objectName, std::function<void(QWidget&)> drive)
        : m_name(QLatin1String(objectName)), m_drive(std::move(drive)) {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog == nullptr || dialog->objectName() != m_name) return;
            m_timer.stop();
            m_opened = true;
            m_drive(*dialog);
        });
        m_timer.start();
    }

    bool opened() const { return m_opened; }

  private:
    QString m_name;
    std::function<void(QWidget&)> m_drive;
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
