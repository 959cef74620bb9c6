#include "platform/qt/CenterForm.h"

#include "platform/WindowPlacement.h"

#include <QWidget>

namespace tavex2 {

double pixelsFromTwips(double twips, const QWidget& widget) {
    return twips * widget.logicalDpiX() / twipsPerInch;
}

void CenterForm(QWidget* child, const QWidget* parent) {
    if (child == nullptr || parent == nullptr || !child->isWindow() || !parent->isWindow()) return;
    const double twipsPerPixel = 1 / pixelsFromTwips(1, *parent);
    const QRect over = parent->frameGeometry();
    const QSize size = child->frameSize();
    const WindowCorner corner = centredOver({.left = over.x() * twipsPerPixel,
                                             .top = over.y() * twipsPerPixel,
                                             .width = over.width() * twipsPerPixel,
                                             .height = over.height() * twipsPerPixel},
                                            size.width() * twipsPerPixel, size.height() * twipsPerPixel);
    const QPoint place(qRound(corner.left / twipsPerPixel), qRound(corner.top / twipsPerPixel));
    // A window that was never moved stands at the origin. Moving it to where it stands would not tell the desktop,
    // which then finds a place of its own.
    if (child->pos() == place) child->move(place + QPoint(1, 1));
    child->move(place);
}

} // namespace tavex2
