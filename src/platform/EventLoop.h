#pragma once

#include <chrono>
#include <functional>

namespace tavex2 {

/// The user-interface thread's queue of events, as the logic sees it.
class EventLoop {
  public:
    virtual ~EventLoop() = default;

    /// Queues `event` to run on the user-interface thread, after all that was queued before. Any thread.
    virtual void post(std::function<void()> event) = 0;

    /// Runs `event` on the user-interface thread when that much time has passed, not earlier. User-interface thread
    /// only.
    virtual void after(std::chrono::milliseconds time, std::function<void()> event) = 0;
};

} // namespace tavex2
