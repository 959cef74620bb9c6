#pragma once

#include "display/TracePyramid.h"

#include <cstdint>
#include <vector>

namespace tavex2 {

/// The stretch of time that a row of pixels shows: `left` seconds at the left edge of the first pixel, `right` at the
/// right edge of the last. A window with right < left shows time backwards.
struct TimeWindow {
    double left = 0;
    double right = 0;
    int pixels = 0;
};

/// Samples first <= index < last of a channel.
struct SampleRange {
    std::int64_t first = 0;
    std::int64_t last = 0;

    std::int64_t size() const { return last - first; }
};

/// How many samples share one pixel; 0 for a window without extent.
double samplesPerPixel(double sampleIntervalSeconds, const TimeWindow& window);

/// One extent per pixel of the window: what the line through the samples spans there. A sample lies at index x
/// interval; between two samples the line is straight, so neighbouring columns share the value at their common edge and
/// the picture has no gaps. Every sample inside the window is part of a column, so that no spike is lost. Columns
/// beside the data or over NaN are empty. Where hundreds of samples share a pixel, a sample may fall into the next
/// column when it lies within a quarter of a pixel from it, and columns touch rather than share a value. The cost goes
/// with the pixels, not with the samples. `columns` is resized; passing the same vector again saves memory allocations.
void traceColumns(const TracePyramid& trace, double sampleIntervalSeconds, const TimeWindow& window,
                  std::vector<Extent>& columns);

/// The samples that a polyline across the window goes through: those inside and, where there is one, the next beyond
/// either edge.
SampleRange visibleSamples(std::int64_t samples, double sampleIntervalSeconds, const TimeWindow& window);

} // namespace tavex2
