#include "platform/qt/QtEventLoop.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QTimer>

#include <utility>

namespace tavex2 {

void QtEventLoop::post(std::function<void()> event) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(event), Qt::QueuedConnection);
}

void QtEventLoop::after(std::chrono::milliseconds time, std::function<void()> event) {
    QTimer::singleShot(time, Qt::PreciseTimer, QCoreApplication::instance(), std::move(event));
}

} // namespace tavex2
