#pragma once

#include "display/TracePixels.h"
#include "display/ui/QCustomPlotLibrary.h"

#include <vector>

namespace tavex2 {

class TracePlottable;

/// Draws all traces of a graph at once where a picture is made of pixels: together they write each pixel once, straight
/// into the picture's memory. Where a picture is made of shapes, as on paper, each trace draws itself.
/// Lies on a layer above the traces. User-interface thread; made by CWGraph.
class PixelTraces final : public QCPLayerable {
    Q_OBJECT

  public:
    /// `traces` is the graph's own list, the first one lowest.
    PixelTraces(QCustomPlot& graph, const std::vector<TracePlottable*>& traces);

    /// True where this draws the traces.
    static bool draws(const QCPPainter& painter);

  protected:
    QRect clipRect() const override;
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

  private:
    void paint(QImage& image, const QCPPainter& painter, const QRect& visible);

    const std::vector<TracePlottable*>& m_traces;

    // Kept from one redraw to the next for their memory.
    std::vector<TraceShape> m_shapes;
    std::vector<PixelPoint> m_points;
};

} // namespace tavex2
