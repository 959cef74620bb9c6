#pragma once

#include "acquisition/records/TrialBuffers.h"
#include "base/Result.h"
#include "display/TrialPyramid.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace tavex2 {

/// What is read off a stretch of one channel: NaN where there is nothing but NaN, the integral where there is any.
struct Readings {
    double Minimum = 0;  ///< V
    double Maximum = 0;  ///< V
    double Integral = 0; ///< V s

    double peakToPeak() const { return Maximum - Minimum; }
};

/// One channel of a trial as an array of its own, [sample] of rank 1 and the trial's element type; with `rectify` every
/// sample becomes its absolute value. Error OutOfMemory.
Result<TrialData> ExtractChannel(const TrialData& trial, int channel, bool rectify);

/// Measures stretches of one row of samples in a time that hardly depends on their length: lowest and highest come from
/// the pyramid, sums from running sums of blocks that carry their own rounding errors. Immutable once made.
class ChannelMeasures {
  public:
    /// Measures nothing.
    ChannelMeasures() = default;

    /// `row` is a channel of the pyramid's trial. Reads every sample once.
    ChannelMeasures(std::shared_ptr<const TrialPyramid> pyramid, int row, double rateHz);

    std::int64_t samples() const { return m_pyramid ? m_pyramid->samples() : 0; }

    /// The readings between two samples, both included, in either order. The integral is
    /// dt / 6 x sum of (x[j-1] + 4 x[j] + x[j+1]) over the stretch: Simpson's rule about every sample. Beyond the ends
    /// of the trial the next value is that of the straight line through the last two; both neighbours of the stretch
    /// are taken in single precision. No value for an index outside the data, for data of one sample, which have no
    /// neighbour, and without a rate.
    std::optional<Readings> between(std::int64_t i1, std::int64_t i2) const;

  private:
    static constexpr std::int64_t blockSamples = 1024;

    /// All samples before a block: the sum, what rounding has taken from it, and how many blocks hold values that are
    /// no finite numbers, which are in neither.
    struct RunningSum {
        double sum = 0;
        double lost = 0;
        std::int64_t broken = 0;

        void add(double value);
    };

    double sumOf(std::int64_t first, std::int64_t last) const;

    std::shared_ptr<const TrialPyramid> m_pyramid;
    int m_row = 0;
    double m_rateHz = 0;
    std::vector<RunningSum> m_before; ///< block b: the samples before b x blockSamples
};

/// The readings between two cursors, given as samples.
inline std::optional<Readings> MeasureBetweenCursors(const ChannelMeasures& channel, std::int64_t i1, std::int64_t i2) {
    return channel.between(i1, i2);
}

} // namespace tavex2
