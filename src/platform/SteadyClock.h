#pragma once

#include "platform/MillisecondClock.h"
#include "platform/TimerResolution.h"

#include <condition_variable>
#include <mutex>

namespace tavex2 {

/// The real clock: monotonic, so a change of the wall clock or midnight does not disturb it. Thread-safe.
class SteadyClock final : public MillisecondClock {
  public:
    std::chrono::nanoseconds now() override;

    /// Sleeps until shortly before the next whole millisecond and watches the clock for the rest, so that it is late by
    /// microseconds only.
    void waitForNextMillisecond() override;

    void waitUntil(std::chrono::nanoseconds time, std::stop_token stop) override;

  private:
    TimerResolution m_resolution;
    const std::chrono::steady_clock::time_point m_origin = std::chrono::steady_clock::now();
    std::mutex m_mutex;
    std::condition_variable_any m_stopped; ///< wakes a sleeping waitUntil through its stop token
};

} // namespace tavex2
