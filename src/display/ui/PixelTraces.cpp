#include "display/ui/PixelTraces.h"

#include "display/ui/TracePlottable.h"

namespace tavex2 {

namespace {

bool isPainted(const QPaintDevice& device) {
    return device.devType() == QInternal::Image &&
           static_cast<const QImage&>(device).format() == QImage::Format_ARGB32_Premultiplied;
}

} // namespace

PixelTraces::PixelTraces(QCustomPlot& graph, const std::vector<TracePlottable*>& traces)
    : QCPLayerable(&graph), m_traces(traces) {}

bool PixelTraces::draws(const QCPPainter& painter) {
    const QTransform& transform = painter.deviceTransform();
    return !painter.modes().testFlag(QCPPainter::pmVectorized) && transform.type() <= QTransform::TxScale &&
           transform.m11() == transform.m22() && transform.m11() >= 1 && transform.m11() <= TracePlottable::finestScale;
}

QRect PixelTraces::clipRect() const {
    return parentPlot()->axisRect()->rect();
}

void PixelTraces::applyDefaultAntialiasingHint(QCPPainter*) const {}

void PixelTraces::draw(QCPPainter* painter) {
    if (!draws(*painter)) return;
    const double scale = painter->deviceTransform().m11();
    const QRectF clip = painter->clipBoundingRect();
    const QPaintDevice& device = *painter->device();
    const QRect visible = QRectF(clip.topLeft() * scale, clip.size() * scale).toAlignedRect() &
                          QRect(0, 0, device.width(), device.height());
    if (visible.isEmpty()) return;

    if (isPainted(device)) {
        paint(static_cast<QImage&>(*painter->device()), *painter, visible);
        return;
    }
    QImage image(device.width(), device.height(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    paint(image, *painter, visible);
    image.setDevicePixelRatio(scale);
    painter->drawImage(0, 0, image);
}

/// Runs of traces that are columns are painted together, smooth lines one by one in between.
void PixelTraces::paint(QImage& image, const QCPPainter& painter, const QRect& visible) {
    const std::ptrdiff_t stride = image.bytesPerLine() / static_cast<std::ptrdiff_t>(sizeof(std::uint32_t));
    const PixelArea area{reinterpret_cast<std::uint32_t*>(image.bits()) + visible.top() * stride + visible.left(),
                         stride, visible.width(), visible.height()};
    std::size_t shapes = 0;
    const auto paintCollected = [&] {
        paintShapes(area, std::span(m_shapes).first(shapes));
        shapes = 0;
    };
    for (TracePlottable* trace : m_traces) {
        if (!trace->hasTrace() || !trace->realVisibility()) continue;
        if (const auto line = trace->smoothLine(painter, visible.topLeft(), m_points)) {
            paintCollected();
            if (line->outline != 0) paintLine(area, m_points, line->outlineThickness, line->outline);
            paintLine(area, m_points, line->thickness, line->colour);
            continue;
        }
        if (shapes == m_shapes.size()) m_shapes.emplace_back();
        trace->fillShape(painter, visible.topLeft(), m_shapes[shapes++]);
    }
    paintCollected();
}

} // namespace tavex2
