#include "app/ui/FileWork.h"

#include <QApplication>
#include <QKeyEvent>
#include <QProgressBar>
#include <QPushButton>

namespace tavex2 {

namespace {

/// Shorter work is over before anyone could read the bar.
constexpr qint64 worthShowingMs = 200;

} // namespace

FileWork::FileWork(QProgressBar& bar, QPushButton& cancel, QObject* parent)
    : QObject(parent), m_bar(bar), m_cancel(cancel) {
    m_cancel.hide();
    connect(&m_cancel, &QPushButton::clicked, this, [this] { m_cancelled = true; });
}

bool FileWork::step(int done, int of) {
    if (!m_active) {
        m_active = true;
        m_cancelled = false;
        m_since.start();
        qApp->installEventFilter(this);
    }
    if (m_since.elapsed() >= worthShowingMs && m_cancel.isHidden()) {
        m_bar.setFormat(QStringLiteral("%p %"));
        m_bar.show();
        m_cancel.show();
    }
    m_bar.setRange(0, of);
    m_bar.setValue(done);
    QApplication::processEvents();
    return !m_cancelled;
}

void FileWork::end() {
    if (!m_active) return;
    m_active = false;
    qApp->removeEventFilter(this);
    m_bar.hide();
    m_cancel.hide();
}

bool FileWork::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) m_cancelled = true;
        return true;
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::Close:
    case QEvent::Drop:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        if (watched == &m_cancel || watched->isWindowType()) return false; // a window hands it on to its widgets
        event->ignore();
        return true;
    default:
        return false;
    }
}

} // namespace tavex2
