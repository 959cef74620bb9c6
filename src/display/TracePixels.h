#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tavex2 {

/// A rectangle of a picture in memory that traces are painted into. A pixel is 0xAARRGGBB with its colour multiplied by
/// its opacity; colours that are painted are opaque.
struct PixelArea {
    std::uint32_t* pixels = nullptr; ///< the one at the top left
    std::ptrdiff_t stride = 0;       ///< pixels from one row to the next
    int width = 0;
    int height = 0;
};

/// The rows first <= row <= last of a pixel column; rows outside the picture are allowed.
struct RowSpan {
    int first = 0;
    int last = -1;

    bool empty() const { return first > last; }
};

/// A trace as pixel columns: the line goes over the rows `columns[x]` at column x. A line more than a pixel thick shows
/// each of them at `before` columns to the right and `after` to the left as well; an outline reaches `rim` pixels
/// beyond the line on every side.
struct TraceShape {
    std::vector<RowSpan> columns;
    int before = 0;
    int after = 0;
    std::uint32_t colour = 0;
    std::uint32_t outline = 0; ///< 0 for none
    int rim = 0;
};

/// A place in a picture, in pixels from its top left corner. One whose y is NaN breaks a line.
struct PixelPoint {
    double x = 0;
    double y = 0;
};

/// Paints traces, each over those before it. A pixel is written once, whatever the number of traces over each other:
/// each column is filled from the last trace down, and what is hidden is left out.
void paintShapes(const PixelArea& area, std::span<const TraceShape> traces);

/// Paints a smooth line through the points, one pixel thick where `thickness` is 1 or less; a thicker one has round
/// ends and corners. A point between breaks is a dot. Coordinates are finite, except for breaks, and below 1e6.
void paintLine(const PixelArea& area, std::span<const PixelPoint> points, double thickness, std::uint32_t colour);

} // namespace tavex2
