#include "display/TraceColumns.h"

#include <cmath>
#include <limits>

namespace tavex2 {

namespace {

bool usable(double sampleIntervalSeconds, const TimeWindow& window) {
    return sampleIntervalSeconds > 0 && std::isfinite(sampleIntervalSeconds) && std::isfinite(window.left) &&
           std::isfinite(window.right) && window.left != window.right && window.pixels > 0;
}

// Positions are -1 or more. Rounding them by std::ceil() and std::round() would take calls where few instructions do.

std::int64_t nextWhole(double at) {
    const auto whole = static_cast<std::int64_t>(at);
    return static_cast<double>(whole) < at ? whole + 1 : whole;
}

double nearestWhole(double at) {
    return static_cast<double>(static_cast<std::int64_t>(at + 1.5) - 1);
}

/// A time as a position among the samples, held inside [-1, samples] so that it can be counted with. Division by the
/// interval may miss a sample by a rounding error; such a position is put back onto it.
double position(double seconds, double sampleIntervalSeconds, std::int64_t samples) {
    const double exact = std::clamp(seconds / sampleIntervalSeconds, -1.0, static_cast<double>(samples));
    const double nearest = nearestWhole(exact);
    return std::abs(exact - nearest) < 1e-6 ? nearest : exact;
}

/// The whole bucket's beginning that lies nearest to a position.
double nearestBucket(double at) {
    constexpr auto size = static_cast<double>(TracePyramid::bucketSamples);
    return nearestWhole(at / size) * size;
}

/// False as well where either is empty.
bool touch(const Extent& one, const Extent& other) {
    return one.lowest <= other.highest && other.lowest <= one.highest;
}

/// Adds the value of the line through the samples at a position; nothing beside the data or next to NaN.
void addValueAt(const TracePyramid& trace, double at, Extent& column) {
    if (at < 0 || at > static_cast<double>(trace.samples() - 1)) return;
    const auto before = static_cast<std::int64_t>(at);
    // What lies between these bounds is part of the column already; a look at them spares one into the samples.
    if (column.contains(trace.bounds(before)) &&
        column.contains(trace.bounds(std::min(before + 1, trace.samples() - 1))))
        return;
    const double fraction = at - static_cast<double>(before);
    const double value = trace.sample(before);
    column.add(fraction > 0 ? value + fraction * (trace.sample(before + 1) - value) : value);
}

/// The value of the line through the samples at a position; NaN beside the data or next to NaN.
template <class T>
double valueAt(std::span<const T> samples, double at) {
    if (at < 0 || at > static_cast<double>(samples.size() - 1)) return std::numeric_limits<double>::quiet_NaN();
    const auto before = static_cast<std::size_t>(static_cast<std::int64_t>(at));
    const double fraction = at - static_cast<double>(static_cast<std::int64_t>(before));
    const double value = samples[before];
    return fraction > 0 ? value + fraction * (samples[before + 1] - value) : value;
}

/// Columns that hold less than a bucket of the pyramid each: made from the samples, each edge looked at once.
template <class T>
void fewSamplesColumns(const TracePyramid& trace, std::span<const T> samples, double sampleIntervalSeconds,
                       const TimeWindow& window, std::vector<Extent>& columns) {
    constexpr std::int64_t few = 16; // below it the pyramid's own look at samples takes longer to begin than to do
    const auto count = static_cast<std::int64_t>(samples.size());
    const double span = window.right - window.left;
    double edge = position(window.left, sampleIntervalSeconds, count);
    double value = valueAt(samples, edge);
    for (int pixel = 0; pixel < window.pixels; ++pixel) {
        const double seconds = window.left + span * (pixel + 1) / window.pixels;
        const double next = position(seconds, sampleIntervalSeconds, count);
        const double nextValue = valueAt(samples, next);
        const std::int64_t first = std::max<std::int64_t>(nextWhole(std::min(edge, next)), 0);
        const std::int64_t last = std::min(nextWhole(std::max(edge, next)), count);
        Extent column;
        if (last - first > few) {
            column = trace.extent(first, last);
        } else {
            for (std::int64_t i = first; i < last; ++i)
                column.add(samples[static_cast<std::size_t>(i)]);
        }
        column.add(value);
        column.add(nextValue);
        columns[static_cast<std::size_t>(pixel)] = column;
        edge = next;
        value = nextValue;
    }
}

} // namespace

double samplesPerPixel(double sampleIntervalSeconds, const TimeWindow& window) {
    if (!usable(sampleIntervalSeconds, window)) return 0;
    return std::abs(window.right - window.left) / sampleIntervalSeconds / window.pixels;
}

void traceColumns(const TracePyramid& trace, double sampleIntervalSeconds, const TimeWindow& window,
                  std::vector<Extent>& columns) {
    columns.assign(static_cast<std::size_t>(std::max(window.pixels, 0)), Extent{});
    if (!usable(sampleIntervalSeconds, window) || trace.samples() == 0) return;

    // Where columns hold two buckets or more, their edges move to the nearest whole bucket, by a quarter of a pixel at
    // most: what lies in whole buckets is known without fetching samples from memory. The window's own edges stay.
    const double density = samplesPerPixel(sampleIntervalSeconds, window);
    if (density < TracePyramid::bucketSamples) {
        trace.visitSamples(
            [&](auto samples) { fewSamplesColumns(trace, samples, sampleIntervalSeconds, window, columns); });
        return;
    }
    const bool crowded = density >= 2 * TracePyramid::bucketSamples;
    const double span = window.right - window.left;
    const auto count = static_cast<double>(trace.samples());
    double edge = position(window.left, sampleIntervalSeconds, trace.samples());
    Extent* before = nullptr;
    for (int pixel = 0; pixel < window.pixels; ++pixel) {
        const double seconds = window.left + span * (pixel + 1) / window.pixels;
        double next = position(seconds, sampleIntervalSeconds, trace.samples());
        const bool inner = next > 0 && next < count - 1 && pixel + 1 < window.pixels;
        if (crowded && inner) next = nearestBucket(next);
        Extent& column = columns[static_cast<std::size_t>(pixel)];
        const std::int64_t first = nextWhole(std::min(edge, next));
        const std::int64_t last = nextWhole(std::max(edge, next));
        column = trace.extent(first, last);
        if (!crowded) {
            addValueAt(trace, edge, column);
            addValueAt(trace, next, column);
        } else {
            if (!before || !touch(*before, column)) {
                addValueAt(trace, edge, column);
                if (before) addValueAt(trace, edge, *before);
            }
            if (!inner) addValueAt(trace, next, column);
        }
        before = &column;
        edge = next;
    }
}

SampleRange visibleSamples(std::int64_t samples, double sampleIntervalSeconds, const TimeWindow& window) {
    if (!usable(sampleIntervalSeconds, window)) return {};
    const auto [low, high] = std::minmax({window.left, window.right});
    const auto first = static_cast<std::int64_t>(std::floor(position(low, sampleIntervalSeconds, samples)));
    const auto last = static_cast<std::int64_t>(std::ceil(position(high, sampleIntervalSeconds, samples))) + 1;
    const SampleRange range{std::clamp<std::int64_t>(first, 0, samples), std::clamp<std::int64_t>(last, 0, samples)};
    return range.size() > 0 ? range : SampleRange{};
}

} // namespace tavex2
