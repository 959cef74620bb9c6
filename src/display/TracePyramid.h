#pragma once

#include "display/Extent.h"

#include <cstdint>
#include <span>
#include <variant>
#include <vector>

namespace tavex2 {

/// Answers "lowest and highest of these samples" for any stretch of one channel in a time that hardly depends on the
/// stretch's length: level 0 keeps the extent of every 64 samples, each further level that of 8 entries below.
///
/// The samples themselves are not copied; they must outlive the pyramid and stay as they are. Immutable once made, so
/// any thread may ask.
class TracePyramid {
  public:
    /// Samples that one entry of the lowest level stands for.
    static constexpr std::int64_t bucketSamples = 64;
    /// Entries that one entry of the level above stands for.
    static constexpr std::int64_t branching = 8;

    /// A pyramid over no samples.
    TracePyramid() = default;

    /// Reads all samples once.
    explicit TracePyramid(std::span<const float> samples);
    explicit TracePyramid(std::span<const double> samples);

    std::int64_t samples() const;

    /// One sample; `index` must be inside.
    double sample(std::int64_t index) const;

    /// Hands the samples to `visitor` as a span of float or double and returns its result.
    template <class Visitor>
    auto visitSamples(const Visitor& visitor) const {
        return std::visit(visitor, m_samples);
    }

    /// Extent of all samples.
    const Extent& whole() const { return m_whole; }
    /// Extent of the samples that are finite numbers, to which an axis can be fitted.
    const Extent& finite() const { return m_finite; }

    /// The exact extent of the samples first <= index < last; indices outside the data are ignored. Empty when no
    /// sample other than NaN is left.
    Extent extent(std::int64_t first, std::int64_t last) const;

    /// Bounds of a sample, taken from a level: the extent of the samples it is stored with. `index` must be inside.
    const Extent& bounds(std::int64_t index) const {
        return m_levels.front()[static_cast<std::size_t>(index / bucketSamples)];
    }

  private:
    template <class T>
    void build(std::span<const T> samples);
    template <class T>
    Extent finiteExtent(std::span<const T> samples) const;
    Extent rawExtent(std::int64_t first, std::int64_t last) const;
    void addRaw(std::int64_t first, std::int64_t last, Extent& extent) const;

    std::variant<std::span<const float>, std::span<const double>> m_samples;
    std::vector<std::vector<Extent>> m_levels;
    Extent m_whole;
    Extent m_finite;
};

} // namespace tavex2
