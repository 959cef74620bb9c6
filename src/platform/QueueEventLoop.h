#pragma once

#include "platform/EventLoop.h"
#include "platform/MillisecondClock.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <vector>

namespace tavex2 {

/// The event queue of a program without a window. post() from any thread; the rest from the thread that made it.
class QueueEventLoop final : public EventLoop {
  public:
    /// `clock` tells when the time of an after() is over, and outlives the loop. While such a time is awaited and
    /// nothing else is to be done the loop waits on it, so a clock that moves when it is waited for moves.
    explicit QueueEventLoop(MillisecondClock& clock) : m_clock(clock) {}

    void post(std::function<void()> event) override;
    void after(std::chrono::milliseconds time, std::function<void()> event) override;

    /// Runs events as they come until `done` holds, which is asked before the first and after each event. False when it
    /// did not hold within `longest`.
    bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds longest);

  private:
    struct Timed {
        std::chrono::nanoseconds due;
        std::function<void()> event;
    };
    std::function<void()> takePosted();
    std::function<void()> takeDue();

    MillisecondClock& m_clock;
    std::vector<Timed> m_timed;
    std::mutex m_mutex;
    std::condition_variable m_posted;
    std::deque<std::function<void()>> m_queue;
};

} // namespace tavex2
