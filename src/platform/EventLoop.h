#pragma once

#include <functional>

namespace tavex2 {

/// The user-interface thread's queue of events, as the logic sees it.
class EventLoop {
  public:
    virtual ~EventLoop() = default;

    /// Queues `event` to run on the user-interface thread, after all that was queued before. Any thread.
    virtual void post(std::function<void()> event) = 0;

    /// Runs what is pending (also mouse and keys, in a window) and returns. User-interface thread only.
    virtual void processPending() = 0;
};

} // namespace tavex2
