#pragma once

#include "platform/EventLoop.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace tavex2 {

/// The event queue of a program without a window. post() from any thread; the rest from the thread that made it.
class QueueEventLoop final : public EventLoop {
  public:
    void post(std::function<void()> event) override;
    void processPending() override;

    /// Runs events as they come until `done` holds, which is asked before the first and after each event. False when it
    /// did not hold within `longest`.
    bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds longest);

  private:
    std::mutex m_mutex;
    std::condition_variable m_posted;
    std::deque<std::function<void()>> m_queue;
};

} // namespace tavex2
