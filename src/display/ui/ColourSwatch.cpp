#include "display/ui/ColourSwatch.h"

#include <QPainter>
#include <QPixmap>

namespace tavex2 {

QIcon colourSwatch(Rgb colour) {
    QPixmap picture(swatchSize);
    picture.fill(QColor(colour.red, colour.green, colour.blue));
    QPainter(&picture).drawRect(picture.rect().adjusted(0, 0, -1, -1));
    return picture;
}

} // namespace tavex2
