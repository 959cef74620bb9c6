#pragma once

#include "base/Result.h"
#include "base/SampleMemory.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tavex2 {

/// The width of one sample: float64 as a board delivers it, float32 as a trial file holds it.
enum class ElementType { Float32, Float64 };

/// One trial's samples in volts: a contiguous channel-major block, [channel][sample], moved and never copied.
///
/// The rank tells how the trial came about: a one-channel collection has rank 1 (indexed by sample alone), every
/// other trial rank 2 (a one-channel trial read from a file has rank 2 with a single row). All accessors take a
/// channel and work for both.
class TrialArray {
  public:
    /// An empty array: no channels, no samples.
    TrialArray() = default;

    /// Reserves an array without filling it. `rank` is 1 or 2; rank 1 needs exactly one channel.
    /// Error OutOfMemory when the machine cannot hold it, InvalidValue for a negative or empty shape.
    static Result<TrialArray> allocate(ElementType type, int rank, int channels, std::int64_t samples);

    int rank() const { return m_rank; }
    int channels() const { return m_channels; }
    std::int64_t samples() const { return m_samples; }
    ElementType elementType() const { return m_type; }
    bool empty() const { return m_channels == 0 || m_samples == 0; }
    std::size_t elementSize() const { return m_type == ElementType::Float32 ? sizeof(float) : sizeof(double); }

    /// The samples of one channel; only for an array of that element type.
    std::span<float> floats(int channel);
    std::span<const float> floats(int channel) const;
    std::span<double> doubles(int channel);
    std::span<const double> doubles(int channel) const;

    /// The same for code that is written for either type: T is float or double.
    template <class T>
    std::span<T> samplesOf(int channel) {
        return row<T>(channel);
    }
    template <class T>
    std::span<const T> samplesOf(int channel) const {
        return row<const T>(channel);
    }

    /// One sample in volts.
    double at(int channel, std::int64_t sample) const;

    /// Calls `f` with the samples of one channel as a span of their own type.
    template <class F>
    decltype(auto) visitChannel(int channel, F&& f) const {
        if (m_type == ElementType::Float32) return f(floats(channel));
        return f(doubles(channel));
    }

    /// Keeps only the first `samples` samples of every channel; the rows move together, nothing is reallocated.
    void truncate(std::int64_t samples);

  private:
    template <class T>
    std::span<T> row(int channel) const {
        assert(channel >= 0 && channel < m_channels && sizeof(T) == elementSize());
        auto* first = reinterpret_cast<T*>(m_data.get());
        return {first + static_cast<std::ptrdiff_t>(channel) * m_samples, static_cast<std::size_t>(m_samples)};
    }

    ElementType m_type = ElementType::Float64;
    int m_rank = 0;
    int m_channels = 0;
    std::int64_t m_samples = 0;
    SampleMemory m_data;
};

} // namespace tavex2
