#pragma once

#include "base/TrialArray.h"
#include "display/TracePyramid.h"

#include <memory>
#include <vector>

namespace tavex2 {

/// The pyramids of all channels of one trial, which it keeps alive. Immutable once made; graphs that show the same
/// trial share one.
class TrialPyramid {
  public:
    /// Reads every sample of the trial once, a large trial on several threads; returns when all is done. No trial gives
    /// a pyramid without channels.
    explicit TrialPyramid(std::shared_ptr<const TrialArray> trial);

    const std::shared_ptr<const TrialArray>& trial() const { return m_trial; }
    int channels() const { return static_cast<int>(m_channels.size()); }
    std::int64_t samples() const { return m_channels.empty() ? 0 : m_channels.front().samples(); }
    const TracePyramid& channel(int index) const { return m_channels[static_cast<std::size_t>(index)]; }

    /// Extent of all samples of all channels.
    const Extent& whole() const { return m_whole; }
    /// Extent of those that are finite numbers.
    const Extent& finite() const { return m_finite; }

  private:
    std::shared_ptr<const TrialArray> m_trial;
    std::vector<TracePyramid> m_channels;
    Extent m_whole;
    Extent m_finite;
};

} // namespace tavex2
