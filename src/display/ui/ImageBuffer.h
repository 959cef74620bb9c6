#pragma once

#include "display/ui/QCustomPlotLibrary.h"

#include <QImage>

namespace tavex2 {

/// What a layer of a graph is drawn into: an image whose memory can be reached, which the library's own buffers do not
/// allow. User-interface thread; CWGraph hands them to the library.
class ImageBuffer final : public QCPAbstractPaintBuffer {
  public:
    /// `size` in units of the widget, each `devicePixelRatio` pixels wide and high.
    ImageBuffer(const QSize& size, double devicePixelRatio);

    QCPPainter* startPainting() override;
    void draw(QCPPainter* painter) const override;
    void clear(const QColor& colour) override;

  protected:
    void reallocateBuffer() override;

  private:
    QImage m_image;
};

} // namespace tavex2
