#include "platform/qt/QtEventLoop.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <utility>

namespace tavex2 {

void QtEventLoop::post(std::function<void()> event) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(event), Qt::QueuedConnection);
}

void QtEventLoop::processPending() {
    QCoreApplication::processEvents();
}

} // namespace tavex2
