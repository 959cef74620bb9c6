#pragma once

#include "display/TraceColours.h"
#include "display/TraceColumns.h"
#include "display/TracePixels.h"
#include "display/TrialPyramid.h"
#include "display/ui/QCustomPlotLibrary.h"

#include <memory>
#include <optional>
#include <vector>

namespace tavex2 {

/// One channel of a trial in a CWGraph. Where several samples share a pixel it fills each pixel column from the lowest
/// to the highest value there, so that no spike is lost and a redraw costs pixels; where samples lie far apart it is a
/// smooth line through them. It draws itself where a picture is made of shapes; PixelTraces asks it what to paint where
/// it is made of pixels. User-interface thread.
class TracePlottable : public QCPAbstractPlottable {
    Q_OBJECT

  public:
    /// A printer's resolution would ask for more columns than an eye can tell apart.
    static constexpr double finestScale = 4;

    /// How a smooth line is drawn.
    struct Line {
        double thickness = 1; ///< in device pixels
        std::uint32_t colour = 0;
        double outlineThickness = 1;
        std::uint32_t outline = 0; ///< 0 for none
    };

    /// `position` in the channel list decides the colour.
    TracePlottable(QCPAxis* keyAxis, QCPAxis* valueAxis, int position);

    /// Shows a channel: sample i at i x `sampleIntervalSeconds`, `valueFactor` x its value high.
    void setTrace(std::shared_ptr<const TrialPyramid> pyramid, int channel, double sampleIntervalSeconds,
                  double valueFactor);
    void clearTrace();
    bool hasTrace() const { return m_pyramid != nullptr; }

    void setColour(Rgb colour);

    /// The points of the smooth line that the trace is at this zoom, in device pixels from `origin`; no value where it
    /// is drawn in columns.
    std::optional<Line> smoothLine(const QCPPainter& painter, const QPoint& origin,
                                   std::vector<PixelPoint>& points) const;
    /// The columns that the trace is drawn in, in device pixels from `origin`.
    void fillShape(const QCPPainter& painter, const QPoint& origin, TraceShape& shape);

    double selectTest(const QPointF& pos, bool onlySelectable, QVariant* details = nullptr) const override;
    QCPRange getKeyRange(bool& foundRange, QCP::SignDomain inSignDomain = QCP::sdBoth) const override;
    QCPRange getValueRange(bool& foundRange, QCP::SignDomain inSignDomain = QCP::sdBoth,
                           const QCPRange& inKeyRange = QCPRange()) const override;

  protected:
    void draw(QCPPainter* painter) override;
    void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

  private:
    /// The plot area in device pixels and how times and volts fall on it.
    struct Canvas {
        double scale = 1;  ///< device pixels per unit of the painter
        QRect area;        ///< in device pixels
        TimeWindow window; ///< the area's columns
        double slope = 1;  ///< device y = slope x volts + offset
        double offset = 0;
        int thickness = 1; ///< of the line
        int rim = 1;       ///< of the outline, on either side of the line

        double y(double volts) const { return slope * volts + offset; }
    };

    Canvas canvas(const QCPPainter& painter) const;
    bool isSmooth(const Canvas& canvas) const;
    int fillColumns(const Canvas& canvas);
    bool fillPoints(const Canvas& canvas, std::vector<PixelPoint>& points) const;
    void drawColumns(QCPPainter& painter, const Canvas& canvas);
    void drawLine(QCPPainter& painter, const Canvas& canvas);

    std::shared_ptr<const TrialPyramid> m_pyramid;
    int m_channel = 0;
    double m_sampleIntervalSeconds = 1;
    double m_valueFactor = 1;
    QColor m_colour;
    QColor m_outline; ///< invalid for none

    // Kept from one redraw to the next for their memory.
    std::vector<Extent> m_columns;
    std::vector<RowSpan> m_rows; ///< of the line in each column, in device pixels
    std::vector<PixelPoint> m_points;
};

} // namespace tavex2
