#include "help/ui/HelpWindow.h"

#include "help/ui/frmHelp.h"

#include <QApplication>
#include <QWindow>

namespace tavex2 {

HelpWindow::HelpWindow() {
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &HelpWindow::stayUsableBeside);
}

HelpWindow::~HelpWindow() = default;

Result<void> HelpWindow::showContents(const Manual& manual) {
    window(manual).showContents();
    raise();
    return {};
}

Result<void> HelpWindow::showSearch(const Manual& manual) {
    window(manual).showSearch();
    raise();
    return {};
}

Result<void> HelpWindow::showPage(const Manual& manual, const std::string& address) {
    if (!window(manual).showPage(QString::fromStdString(address)))
        return Error{ErrorKind::NotFound, "The help's page " + address + " is missing. Install the program anew."};
    raise();
    return {};
}

frmHelp& HelpWindow::window(const Manual& manual) {
    if (!m_window) m_window = std::make_unique<frmHelp>(manual);
    return *m_window;
}

void HelpWindow::raise() {
    const QWidget* dialog = QApplication::activeModalWidget();
    m_window->winId(); // the window of the system, which exists from here on
    stayUsableBeside(dialog != nullptr ? dialog->windowHandle() : nullptr);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

/// A modal dialog blocks every window except those that belong to it, so the help goes over to the dialog that was
/// opened last.
void HelpWindow::stayUsableBeside(QWindow* focused) {
    if (!m_window || m_window->windowHandle() == nullptr) return;
    QWindow* help = m_window->windowHandle();
    if (focused != nullptr && focused != help && focused->isModal()) help->setTransientParent(focused);
}

} // namespace tavex2
