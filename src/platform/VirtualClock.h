#pragma once

#include "platform/MillisecondClock.h"

#include <condition_variable>
#include <mutex>

namespace tavex2 {

/// A clock for fast runs and tests. Time stands still until somebody waits for its next millisecond; then it moves by
/// exactly one. A board that waits for a time goes on only when that time has passed, so whatever is done at that time
/// (a stimulus pulse) comes first, as on a real board. Set free, the clock jumps to wherever a board waits for.
/// A fast run therefore gives the same samples as a slow one. Thread-safe.
class VirtualClock final : public MillisecondClock {
  public:
    std::chrono::nanoseconds now() override;
    void waitForNextMillisecond() override;
    void waitUntil(std::chrono::nanoseconds time, std::stop_token stop) override;

    void setStepped(bool stepped) override;

    /// Free: boards need not wait, unless it is stepped. Not free (as at first): only waitForNextMillisecond() moves
    /// time.
    void setFreeRunning(bool free);

  private:
    std::mutex m_mutex;
    std::condition_variable_any m_moved;
    std::chrono::nanoseconds m_now{0};
    bool m_free = false;
    bool m_stepped = false;
};

} // namespace tavex2
