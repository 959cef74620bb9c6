#pragma once

#include "platform/MillisecondClock.h"

#include <chrono>
#include <cstdint>
#include <mutex>
#include <stop_token>

namespace tavex2 {

/// Lets a board without hardware deliver its scans at the times at which a real one would: scan k is there when
/// k / rate has passed since the start. begin() on the user-interface thread, waitForScan() on the acquisition thread,
/// end() on any.
class Pacing {
  public:
    explicit Pacing(MillisecondClock& clock) : m_clock(clock) {}

    void begin(double rateHz) {
        const std::lock_guard lock(m_mutex);
        m_stop = std::stop_source();
        m_rateHz = rateHz;
        m_start = m_clock.now();
    }

    /// Ends the stream and wakes a waiting waitForScan(); for good, until the next begin().
    void end() {
        const std::lock_guard lock(m_mutex);
        m_stop.request_stop();
    }

    /// Waits until scan number `scan` is there. False when the stream has ended.
    bool waitForScan(std::int64_t scan) {
        const std::stop_token stop = token();
        if (stop.stop_requested()) return false;
        m_clock.waitUntil(timeOf(scan), stop);
        return !stop.stop_requested();
    }

    /// The clock's reading at which a scan is taken.
    std::chrono::nanoseconds timeOf(std::int64_t scan) const {
        return m_start +
               std::chrono::nanoseconds(static_cast<std::int64_t>(static_cast<double>(scan) * 1e9 / m_rateHz));
    }

    std::chrono::nanoseconds now() { return m_clock.now(); }

  private:
    std::stop_token token() {
        const std::lock_guard lock(m_mutex);
        return m_stop.get_token();
    }

    MillisecondClock& m_clock;
    std::mutex m_mutex; ///< guards m_stop
    std::stop_source m_stop;
    double m_rateHz = 1;
    std::chrono::nanoseconds m_start{0};
};

} // namespace tavex2
