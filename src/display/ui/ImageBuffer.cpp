#include "display/ui/ImageBuffer.h"

namespace tavex2 {

ImageBuffer::ImageBuffer(const QSize& size, double devicePixelRatio) : QCPAbstractPaintBuffer(size, devicePixelRatio) {
    ImageBuffer::reallocateBuffer();
}

QCPPainter* ImageBuffer::startPainting() {
    return new QCPPainter(&m_image); // the library deletes it
}

void ImageBuffer::draw(QCPPainter* painter) const {
    if (painter && painter->isActive()) painter->drawImage(0, 0, m_image);
}

void ImageBuffer::clear(const QColor& colour) {
    m_image.fill(colour);
}

void ImageBuffer::reallocateBuffer() {
    setInvalidated();
    m_image = QImage(mSize * mDevicePixelRatio, QImage::Format_ARGB32_Premultiplied);
    m_image.setDevicePixelRatio(mDevicePixelRatio);
}

} // namespace tavex2
