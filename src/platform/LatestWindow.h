#pragma once

#include "platform/ScanStore.h"

#include <cstdint>
#include <span>

namespace tavex2 {

/// The newest scans of an endless stream, for watching it. Pure logic without a thread of its own; the acquisition
/// thread drives it.
class LatestWindow {
  public:
    /// Reserves room for `scans` scans of `channels` channels. Errors: InvalidValue, OutOfMemory.
    static Result<LatestWindow> create(int channels, std::int64_t scans, const VoltageLimits& limits);

    /// Takes the next scans, channel after channel; they push out the oldest.
    void add(std::span<const double> interleaved);

    /// A copy of the newest scans, oldest first (float64, rank 1 for one channel): the whole window, or fewer in the
    /// beginning. Errors: InvalidValue before the first scan, OutOfMemory.
    Result<TrialArray> latest() const;

    /// Number of the oldest scan that is kept, counted from the first one ever taken.
    std::int64_t firstScan() const { return m_seen - m_kept; }

  private:
    LatestWindow(TrialArray ring, const VoltageLimits& limits);

    TrialArray m_ring;
    VoltageLimits m_limits;
    std::int64_t m_seen = 0; ///< scans taken so far
    std::int64_t m_kept = 0; ///< scans in the ring
    std::int64_t m_next = 0; ///< where the next scan goes
};

} // namespace tavex2
