#include "display/TracePyramid.h"

#include <array>
#include <cassert>
#include <cmath>

namespace tavex2 {

namespace {

/// Independent lanes let the compiler keep several vector minima and maxima in flight; the comparisons are written so
/// that a NaN never wins.
template <class T>
Extent extentOf(std::span<const T> samples) {
    constexpr std::size_t lanes = 64 / sizeof(T);
    constexpr T infinity = std::numeric_limits<T>::infinity();
    const T* const data = samples.data();
    const std::size_t count = samples.size();

    std::array<T, lanes> lowest;
    std::array<T, lanes> highest;
    lowest.fill(infinity);
    highest.fill(-infinity);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            const T sample = data[i + lane];
            lowest[lane] = sample < lowest[lane] ? sample : lowest[lane];
            highest[lane] = sample > highest[lane] ? sample : highest[lane];
        }
    }
    for (std::size_t lane = 0; i < count; ++i, ++lane) {
        const T sample = data[i];
        lowest[lane] = sample < lowest[lane] ? sample : lowest[lane];
        highest[lane] = sample > highest[lane] ? sample : highest[lane];
    }
    for (std::size_t half = lanes / 2; half > 0; half /= 2) {
        for (std::size_t lane = 0; lane < half; ++lane) {
            lowest[lane] = std::min(lowest[lane], lowest[lane + half]);
            highest[lane] = std::max(highest[lane], highest[lane + half]);
        }
    }
    return {lowest[0], highest[0]};
}

template <class T>
std::span<const T> part(std::span<const T> samples, std::int64_t first, std::int64_t last) {
    return samples.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first));
}

std::int64_t sizeOf(const auto& container) {
    return static_cast<std::int64_t>(container.size());
}

} // namespace

TracePyramid::TracePyramid(std::span<const float> samples) : m_samples(samples) {
    build(samples);
}
TracePyramid::TracePyramid(std::span<const double> samples) : m_samples(samples) {
    build(samples);
}

template <class T>
void TracePyramid::build(std::span<const T> samples) {
    if (samples.empty()) return;
    const std::int64_t count = sizeOf(samples);

    std::vector<Extent> level;
    level.reserve(static_cast<std::size_t>((count + bucketSamples - 1) / bucketSamples));
    for (std::int64_t first = 0; first < count; first += bucketSamples)
        level.push_back(extentOf(part(samples, first, std::min(first + bucketSamples, count))));
    m_levels.push_back(std::move(level));

    while (sizeOf(m_levels.back()) > branching) {
        const std::vector<Extent>& below = m_levels.back();
        std::vector<Extent> above((below.size() + branching - 1) / branching);
        for (std::size_t i = 0; i < below.size(); ++i)
            above[i / branching].add(below[i]);
        m_levels.push_back(std::move(above));
    }
    for (const Extent& extent : m_levels.back())
        m_whole.add(extent);
    m_finite = m_whole.finite() ? m_whole : finiteExtent(samples);
}

/// Only the buckets with an infinite sample are read again.
template <class T>
Extent TracePyramid::finiteExtent(std::span<const T> samples) const {
    Extent result;
    std::int64_t first = 0;
    for (const Extent& bucket : m_levels.front()) {
        const std::int64_t last = std::min(first + bucketSamples, sizeOf(samples));
        if (bucket.finite()) {
            result.add(bucket);
        } else {
            for (const T sample : part(samples, first, last))
                if (std::isfinite(sample)) result.add(static_cast<double>(sample));
        }
        first = last;
    }
    return result;
}

std::int64_t TracePyramid::samples() const {
    return std::visit([](auto samples) { return sizeOf(samples); }, m_samples);
}

double TracePyramid::sample(std::int64_t index) const {
    assert(index >= 0 && index < samples());
    return std::visit([index](auto samples) -> double { return samples[static_cast<std::size_t>(index)]; }, m_samples);
}

Extent TracePyramid::rawExtent(std::int64_t first, std::int64_t last) const {
    return std::visit([=](auto samples) { return extentOf(part(samples, first, last)); }, m_samples);
}

Extent TracePyramid::extent(std::int64_t first, std::int64_t last) const {
    first = std::max<std::int64_t>(first, 0);
    last = std::min(last, samples());
    if (first >= last) return {};

    // Whole buckets come from the levels, the ragged ends from the samples.
    const std::int64_t firstWhole = (first + bucketSamples - 1) / bucketSamples;
    const std::int64_t lastWhole = last / bucketSamples;
    if (firstWhole >= lastWhole) return rawExtent(first, last);

    Extent result;
    std::int64_t low = firstWhole;
    std::int64_t high = lastWhole;
    for (const std::vector<Extent>& level : m_levels) {
        const auto entry = [&level](std::int64_t index) { return level[static_cast<std::size_t>(index)]; };
        const bool top = &level == &m_levels.back();
        while (low < high && (top || low % branching != 0))
            result.add(entry(low++));
        while (low < high && high % branching != 0)
            result.add(entry(--high));
        if (low >= high) break;
        low /= branching;
        high /= branching;
    }
    addRaw(first, firstWhole * bucketSamples, result);
    addRaw(lastWhole * bucketSamples, last, result);
    return result;
}

/// Adds a part of one bucket, unless the bucket's extent tells that it changes nothing: samples far apart are slow to
/// fetch from memory.
void TracePyramid::addRaw(std::int64_t first, std::int64_t last, Extent& extent) const {
    if (first < last && !extent.contains(bounds(first))) extent.add(rawExtent(first, last));
}

} // namespace tavex2
