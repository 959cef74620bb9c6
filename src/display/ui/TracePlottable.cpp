#include "display/ui/TracePlottable.h"

#include "display/AxisRange.h"
#include "display/TraceColours.h"
#include "display/ui/PixelTraces.h"

#include <cmath>
#include <span>

namespace tavex2 {

namespace {

/// Below this density (one sample in four pixels) a smooth line looks better than columns.
constexpr double polylineSamplesPerPixel = 0.25;
/// From this density on a line is a filled shape rather than a curve.
constexpr double crowdedSamplesPerPixel = 2;
/// The painter's own clipping is exact up to about here.
constexpr double farthestPixel = 16000;
/// Neighbouring columns with so many rows in common are filled together; below that it costs more than it saves.
constexpr int blockHeight = 40;

QColor toColour(Rgb rgb) {
    return {rgb.red, rgb.green, rgb.blue};
}

/// Cuts what stands on a row, up to the `top` of each column, into strips, each as wide as it can be; with `sign` -1
/// what hangs below a row.
void appendStrips(std::span<const QRect> columns, int row, int sign, QVector<QRect>& rects) {
    struct Step {
        std::size_t first; ///< the column at which the step begins
        int height;
    };
    std::vector<Step> steps{{0, 0}};
    for (std::size_t i = 0; i <= columns.size(); ++i) {
        int height = 0;
        if (i < columns.size()) height = sign > 0 ? row - columns[i].top() : columns[i].bottom() - row;
        std::size_t first = i;
        while (steps.back().height > height) {
            const Step step = steps.back();
            steps.pop_back();
            first = step.first;
            const int from = std::max(height, steps.back().height);
            const int top = sign > 0 ? row - step.height : row + from + 1;
            rects.append(QRect(QPoint(columns[first].left(), top),
                               QPoint(columns[i - 1].right(), top + step.height - from - 1)));
        }
        if (height > steps.back().height) steps.push_back({first, height});
    }
}

/// Fills columns given from left to right. The painter fills row by row, so that a wide rectangle costs far less than
/// many narrow ones: high columns that stand side by side become a block with strips above and below it.
void drawRects(QPainter& painter, std::span<const QRect> columns, const QColor& colour) {
    QVector<QRect> rects;
    while (!columns.empty()) {
        QRect block = columns.front();
        std::size_t count = 1;
        for (; count < columns.size() && columns[count].left() <= block.right() + 1; ++count) {
            const int top = std::max(block.top(), columns[count].top());
            const int bottom = std::min(block.bottom(), columns[count].bottom());
            if (bottom - top + 1 < blockHeight) break;
            block = QRect(QPoint(block.left(), top), QPoint(columns[count].right(), bottom));
        }
        rects.append(block);
        if (count > 1) {
            appendStrips(columns.first(count), block.top(), 1, rects);
            appendStrips(columns.first(count), block.bottom(), -1, rects);
        }
        columns = columns.subspan(count);
    }
    painter.setBrush(colour);
    painter.drawRects(rects);
}

/// std::floor() is a call on processors of the oldest kind, which the program is made for.
int rowAt(double y) {
    const int row = static_cast<int>(y);
    return y < row ? row - 1 : row;
}

QPen roundPen(const QColor& colour, int thickness) {
    return {colour, static_cast<double>(thickness), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

} // namespace

TracePlottable::TracePlottable(QCPAxis* keyAxis, QCPAxis* valueAxis, int position)
    : QCPAbstractPlottable(keyAxis, valueAxis) {
    setName(QStringLiteral("Plot-%1").arg(position + 1));
    setColour(traceColour(position));
    setSelectable(QCP::stNone);
}

void TracePlottable::setColour(Rgb colour) {
    const auto outline = traceOutline(colour);
    m_colour = toColour(colour);
    m_outline = outline ? toColour(*outline) : QColor();
    setPen(QPen(m_colour));
}

void TracePlottable::setTrace(std::shared_ptr<const TrialPyramid> pyramid, int channel, double sampleIntervalSeconds,
                              double valueFactor) {
    m_pyramid = std::move(pyramid);
    m_channel = channel;
    m_sampleIntervalSeconds = sampleIntervalSeconds;
    m_valueFactor = valueFactor;
}

void TracePlottable::clearTrace() {
    m_pyramid.reset();
}

double TracePlottable::selectTest(const QPointF&, bool, QVariant*) const {
    return -1;
}

QCPRange TracePlottable::getKeyRange(bool& foundRange, QCP::SignDomain) const {
    foundRange = hasTrace();
    if (!foundRange) return {};
    const AxisRange range = timeRange(m_pyramid->samples(), m_sampleIntervalSeconds);
    return {range.minimum, range.maximum};
}

QCPRange TracePlottable::getValueRange(bool& foundRange, QCP::SignDomain, const QCPRange&) const {
    const Extent whole = hasTrace() ? m_pyramid->channel(m_channel).finite() : Extent{};
    foundRange = !whole.empty();
    return foundRange ? QCPRange(whole.lowest * m_valueFactor, whole.highest * m_valueFactor) : QCPRange();
}

TracePlottable::Canvas TracePlottable::canvas(const QCPPainter& painter) const {
    Canvas canvas;
    canvas.scale = std::clamp(painter.deviceTransform().m11(), 1.0, finestScale);
    const QRectF area = QRectF(clipRect());
    canvas.area = QRectF(area.topLeft() * canvas.scale, area.size() * canvas.scale).toAlignedRect();
    canvas.thickness = std::max(1, static_cast<int>(std::lround(canvas.scale)));
    canvas.rim = std::max(1, canvas.thickness / 2);
    canvas.window = {mKeyAxis->pixelToCoord(canvas.area.left() / canvas.scale),
                     mKeyAxis->pixelToCoord((canvas.area.left() + canvas.area.width()) / canvas.scale),
                     canvas.area.width()};
    const QCPRange volts = mValueAxis->range();
    const double low = mValueAxis->coordToPixel(volts.lower) * canvas.scale;
    const double high = mValueAxis->coordToPixel(volts.upper) * canvas.scale;
    canvas.slope = (high - low) / volts.size();
    canvas.offset = low - canvas.slope * volts.lower;
    canvas.slope *= m_valueFactor;
    return canvas;
}

bool TracePlottable::isSmooth(const Canvas& canvas) const {
    // Smoothing thick lines is slow, and needless where pixels are that fine.
    return canvas.thickness == 1 && samplesPerPixel(m_sampleIntervalSeconds, canvas.window) < polylineSamplesPerPixel;
}

std::optional<TracePlottable::Line> TracePlottable::smoothLine(const QCPPainter& painter, const QPoint& origin,
                                                               std::vector<PixelPoint>& points) const {
    const Canvas canvas = this->canvas(painter);
    if (!isSmooth(canvas) || !fillPoints(canvas, points)) return {};
    for (PixelPoint& point : points) {
        point.x -= origin.x();
        point.y -= origin.y();
    }
    const auto thickness = static_cast<double>(canvas.thickness);
    return Line{thickness, m_colour.rgba(), thickness + 2 * canvas.rim, m_outline.isValid() ? m_outline.rgba() : 0};
}

void TracePlottable::fillShape(const QCPPainter& painter, const QPoint& origin, TraceShape& shape) {
    const Canvas canvas = this->canvas(painter);
    const int columnWidth = fillColumns(canvas);
    const int offset = canvas.area.left() - origin.x();
    shape.columns.assign(static_cast<std::size_t>(std::max(offset + canvas.area.width(), 0)), RowSpan{});
    for (int x = std::max(offset, 0); x < offset + canvas.area.width(); ++x) {
        const RowSpan& rows = m_rows[static_cast<std::size_t>((x - offset) / columnWidth)];
        if (!rows.empty())
            shape.columns[static_cast<std::size_t>(x)] = {rows.first - origin.y(), rows.last - origin.y()};
    }
    shape.before = columnWidth > 1 ? 0 : canvas.thickness / 2;
    shape.after = columnWidth > 1 ? 0 : (canvas.thickness - 1) / 2;
    shape.colour = m_colour.rgba();
    shape.outline = m_outline.isValid() ? m_outline.rgba() : 0;
    shape.rim = canvas.rim;
}

void TracePlottable::draw(QCPPainter* painter) {
    if (!m_pyramid || !mKeyAxis || !mValueAxis || PixelTraces::draws(*painter)) return;
    const Canvas canvas = this->canvas(*painter);
    painter->save();
    painter->scale(1 / canvas.scale, 1 / canvas.scale);
    if (isSmooth(canvas) && fillPoints(canvas, m_points))
        drawLine(*painter, canvas);
    else
        drawColumns(*painter, canvas);
    painter->restore();
}

/// Finds the rows of each column and returns how many device pixels wide the columns are.
int TracePlottable::fillColumns(const Canvas& canvas) {
    // Where samples crowd, columns as wide as the line show as much as finer ones, in half the time on a fine screen.
    const bool crowded = samplesPerPixel(m_sampleIntervalSeconds, canvas.window) >= crowdedSamplesPerPixel;
    const int columnWidth = crowded ? canvas.thickness : 1;
    TimeWindow window = canvas.window;
    window.pixels = (canvas.window.pixels + columnWidth - 1) / columnWidth;
    window.right =
        window.left + (canvas.window.right - canvas.window.left) / canvas.window.pixels * columnWidth * window.pixels;
    traceColumns(m_pyramid->channel(m_channel), m_sampleIntervalSeconds, window, m_columns);

    // Beyond the area by more than a line with its rim nothing can be seen.
    const double top = canvas.area.top() - 4 * canvas.thickness;
    const double bottom = canvas.area.bottom() + 4 * canvas.thickness;
    m_rows.assign(m_columns.size(), RowSpan{});
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const Extent& column = m_columns[i];
        if (column.empty()) continue;
        const auto [high, low] = std::minmax({canvas.y(column.highest), canvas.y(column.lowest)});
        if (low < top || high > bottom) continue;
        m_rows[i] = {rowAt(std::max(high, top)) - (canvas.thickness - 1) / 2,
                     rowAt(std::min(low, bottom)) + canvas.thickness / 2};
    }
    return columnWidth;
}

void TracePlottable::drawColumns(QCPPainter& painter, const Canvas& canvas) {
    const int columnWidth = fillColumns(canvas);
    const int left = canvas.area.left() - (canvas.thickness - columnWidth) / 2;
    std::vector<QRect> columns;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].empty()) continue;
        columns.emplace_back(left + static_cast<int>(i) * columnWidth, m_rows[i].first, canvas.thickness,
                             m_rows[i].last - m_rows[i].first + 1);
    }

    painter.setAntialiasing(false);
    painter.setPen(Qt::NoPen);
    if (m_outline.isValid()) {
        const int rim = canvas.rim;
        std::vector<QRect> outlines = columns;
        for (QRect& column : outlines)
            column.adjust(-rim, -rim, rim, rim);
        drawRects(painter, outlines, m_outline);
    }
    drawRects(painter, columns, m_colour);
}

/// The points of a line in device pixels, a NaN for each sample that is no number. False when a point lies so far away
/// that the painter would lose precision.
bool TracePlottable::fillPoints(const Canvas& canvas, std::vector<PixelPoint>& points) const {
    const TracePyramid& trace = m_pyramid->channel(m_channel);
    const SampleRange range = visibleSamples(trace.samples(), m_sampleIntervalSeconds, canvas.window);
    const double span = canvas.window.right - canvas.window.left;
    points.clear();
    for (std::int64_t i = range.first; i < range.last; ++i) {
        const double seconds = static_cast<double>(i) * m_sampleIntervalSeconds;
        const PixelPoint point{canvas.area.left() + (seconds - canvas.window.left) / span * canvas.window.pixels,
                               canvas.y(trace.sample(i))};
        if (!std::isnan(point.y) && !(std::abs(point.x) < farthestPixel && std::abs(point.y) < farthestPixel))
            return false;
        points.push_back(point);
    }
    return true;
}

void TracePlottable::drawLine(QCPPainter& painter, const Canvas& canvas) {
    std::vector<QPolygonF> pieces(1);
    for (const PixelPoint& point : m_points) {
        if (!std::isnan(point.y))
            pieces.back().append(QPointF(point.x, point.y));
        else if (!pieces.back().isEmpty())
            pieces.emplace_back();
    }

    painter.setAntialiasing(true);
    painter.setBrush(Qt::NoBrush);
    const auto draw = [&painter, &pieces](const QPen& pen) {
        painter.setPen(pen);
        for (const QPolygonF& piece : pieces) {
            if (piece.size() == 1)
                painter.drawPoint(piece.front());
            else
                painter.drawPolyline(piece);
        }
    };
    if (m_outline.isValid()) draw(roundPen(m_outline, canvas.thickness + 2 * canvas.rim));
    draw(roundPen(m_colour, canvas.thickness));
}

void TracePlottable::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const {
    painter->save();
    painter->setAntialiasing(false);
    painter->setPen(m_outline.isValid() ? QPen(m_outline) : QPen(m_colour));
    painter->setBrush(m_colour);
    painter->drawRect(QRectF(rect.left(), rect.center().y() - 3, rect.width() - 1, 5));
    painter->restore();
}

} // namespace tavex2
