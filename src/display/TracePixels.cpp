#include "display/TracePixels.h"

#include <algorithm>
#include <cmath>

namespace tavex2 {

namespace {

/// A part of a pixel column that can be seen.
struct Piece {
    RowSpan rows;
    std::uint32_t colour = 0;
};

/// What is to be seen in one pixel column, collected from the last trace down.
class Column {
  public:
    explicit Column(int height) : m_height(height) {}

    void begin() {
        m_pieces.clear();
        m_covered = {};
    }

    bool full() const { return m_covered.first <= 0 && m_covered.last >= m_height - 1 && !m_covered.empty(); }

    void add(RowSpan rows, std::uint32_t colour) {
        rows = {std::max(rows.first, 0), std::min(rows.last, m_height - 1)};
        if (rows.empty()) return;
        if (m_covered.empty()) {
            m_pieces.push_back({rows, colour});
            m_covered = rows;
        } else if (rows.last + 1 < m_covered.first || rows.first - 1 > m_covered.last) {
            m_pieces.push_back({rows, colour});
            if (rows.last - rows.first > m_covered.last - m_covered.first) m_covered = rows;
        } else {
            if (rows.first < m_covered.first) m_pieces.push_back({{rows.first, m_covered.first - 1}, colour});
            if (rows.last > m_covered.last) m_pieces.push_back({{m_covered.last + 1, rows.last}, colour});
            m_covered = {std::min(rows.first, m_covered.first), std::max(rows.last, m_covered.last)};
        }
    }

    /// Pieces apart from the covered rows may overlap, so the first one comes last.
    void paint(std::uint32_t* top, std::ptrdiff_t stride) const {
        for (std::size_t i = m_pieces.size(); i-- > 0;) {
            const auto& [rows, colour] = m_pieces[i];
            std::uint32_t* pixel = top + rows.first * stride;
            for (int row = rows.first; row <= rows.last; ++row, pixel += stride)
                *pixel = colour;
        }
    }

  private:
    int m_height;
    std::vector<Piece> m_pieces;
    RowSpan m_covered; ///< rows without a gap; what else is painted may be painted over
};

/// Adds the rows that a trace covers at column x: those of its columns from `before` to the left up to `after` to the
/// right, `rim` rows higher and lower.
void addRows(Column& column, const TraceShape& trace, int x, int before, int after, int rim, std::uint32_t colour) {
    const int first = std::max(x - before, 0);
    const int last = std::min(x + after, static_cast<int>(trace.columns.size()) - 1);
    RowSpan joined;
    for (int i = first; i <= last; ++i) {
        RowSpan rows = trace.columns[static_cast<std::size_t>(i)];
        if (rows.empty()) continue;
        rows = {rows.first - rim, rows.last + rim};
        if (joined.empty()) {
            joined = rows;
        } else if (rows.first <= joined.last + 1 && joined.first <= rows.last + 1) {
            joined = {std::min(joined.first, rows.first), std::max(joined.last, rows.last)};
        } else {
            column.add(joined, colour);
            joined = rows;
        }
    }
    if (!joined.empty()) column.add(joined, colour);
}

/// Mixes `share` (0..256) of an opaque colour into a pixel, two of its parts at a time.
void mix(std::uint32_t& pixel, std::uint32_t colour, std::uint32_t share) {
    constexpr std::uint32_t parts = 0x00FF00FF;
    const std::uint32_t rest = 256 - share;
    const std::uint32_t low = ((colour & parts) * share + (pixel & parts) * rest) >> 8;
    const std::uint32_t high = ((colour >> 8) & parts) * share + ((pixel >> 8) & parts) * rest;
    pixel = (low & parts) | (high & ~parts);
}

/// An area seen along a line's steps: a step is a column for a flat line and a row for a steep one.
struct Steps {
    std::uint32_t* pixels;
    std::ptrdiff_t stepStride;
    std::ptrdiff_t acrossStride;
    int steps;
    int across;
};

/// Paints a straight part: at each step whose middle is from `from` up to `to`, what lies `half` about the line across
/// it, which is at `at` where the step is `from`.
void paintStraight(const Steps& area, double from, double to, double at, double slope, double half,
                   std::uint32_t colour) {
    const int first = static_cast<int>(std::ceil(std::clamp(from - 0.5, 0.0, static_cast<double>(area.steps))));
    const int last = static_cast<int>(std::ceil(std::clamp(to - 0.5, 0.0, static_cast<double>(area.steps))));
    for (int step = first; step < last; ++step) {
        const double middle = at + slope * (step + 0.5 - from);
        const double low = std::max(middle - half, 0.0);
        const double high = std::min(middle + half, static_cast<double>(area.across));
        if (low >= high) continue;
        const int lowest = static_cast<int>(low);
        const int highest = std::min(static_cast<int>(high), area.across - 1);
        std::uint32_t* pixel = area.pixels + step * area.stepStride + lowest * area.acrossStride;
        if (lowest == highest) {
            mix(*pixel, colour, static_cast<std::uint32_t>((high - low) * 256));
            continue;
        }
        mix(*pixel, colour, static_cast<std::uint32_t>((lowest + 1 - low) * 256));
        for (int place = lowest + 1; place < highest; ++place)
            *(pixel += area.acrossStride) = colour;
        mix(*(pixel + area.acrossStride), colour, static_cast<std::uint32_t>((high - highest) * 256));
    }
}

void paintDot(const PixelArea& area, const PixelPoint& middle, double radius, std::uint32_t colour) {
    const auto pixel = [](double place, int end) {
        return static_cast<int>(std::clamp(place, 0.0, static_cast<double>(end)));
    };
    for (int y = pixel(middle.y - radius - 1, area.height); y < pixel(middle.y + radius + 2, area.height); ++y) {
        for (int x = pixel(middle.x - radius - 1, area.width); x < pixel(middle.x + radius + 2, area.width); ++x) {
            const double right = x + 0.5 - middle.x;
            const double down = y + 0.5 - middle.y;
            const double distance = std::sqrt(right * right + down * down);
            const double share = std::clamp(radius + 0.5 - distance, 0.0, 1.0);
            mix(area.pixels[y * area.stride + x], colour, static_cast<std::uint32_t>(share * 256));
        }
    }
}

bool isSteep(const PixelPoint& one, const PixelPoint& other) {
    return std::abs(other.y - one.y) > std::abs(other.x - one.x);
}

} // namespace

void paintShapes(const PixelArea& area, std::span<const TraceShape> traces) {
    Column column(area.height);
    for (int x = 0; x < area.width; ++x) {
        column.begin();
        for (std::size_t i = traces.size(); i-- > 0 && !column.full();) {
            const TraceShape& trace = traces[i];
            addRows(column, trace, x, trace.before, trace.after, 0, trace.colour);
            if (trace.outline != 0)
                addRows(column, trace, x, trace.before + trace.rim, trace.after + trace.rim, trace.rim, trace.outline);
        }
        column.paint(area.pixels + x, area.stride);
    }
}

void paintLine(const PixelArea& area, std::span<const PixelPoint> points, double thickness, std::uint32_t colour) {
    const bool thick = thickness > 1;
    const double radius = std::max(thickness, 1.0) / 2;
    const Steps columns{area.pixels, 1, area.stride, area.width, area.height};
    const Steps rows{area.pixels, area.stride, 1, area.height, area.width};
    const auto broken = [&points](std::size_t i) { return i >= points.size() || std::isnan(points[i].y); };
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (broken(i)) continue;
        const bool alone = (i == 0 || broken(i - 1)) && broken(i + 1);
        if (thick || alone) paintDot(area, points[i], radius, colour);
        if (broken(i + 1)) continue;

        const bool steep = isSteep(points[i], points[i + 1]);
        PixelPoint from = points[i];
        PixelPoint to = points[i + 1];
        // Where a thin line ends, or goes on along the other axis, it reaches half a pixel further.
        double before = thick || (i > 0 && !broken(i - 1) && isSteep(points[i - 1], from) == steep) ? 0 : 0.5;
        double after = thick || (!broken(i + 2) && isSteep(to, points[i + 2]) == steep) ? 0 : 0.5;
        if (steep) {
            std::swap(from.x, from.y);
            std::swap(to.x, to.y);
        }
        if (from.x > to.x) {
            std::swap(from, to);
            std::swap(before, after);
        }
        if (from.x == to.x) continue;
        const double slope = (to.y - from.y) / (to.x - from.x);
        // A thin line has as much colour at each step whatever its slope; a thick one is as thick across itself.
        const double half = thick ? radius * std::sqrt(1 + slope * slope) : radius;
        paintStraight(steep ? rows : columns, from.x - before, to.x + after, from.y - slope * before, slope, half,
                      colour);
    }
}

} // namespace tavex2
