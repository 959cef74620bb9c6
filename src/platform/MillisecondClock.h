#pragma once

#include <chrono>
#include <cstdint>
#include <stop_token>

namespace tavex2 {

/// The program's monotonic clock. One is made at start-up; boards pace themselves by it and the run controller times
/// the stimulus pulses with it. All calls are thread-safe.
class MillisecondClock {
  public:
    virtual ~MillisecondClock() = default;

    /// Time since the clock was made.
    virtual std::chrono::nanoseconds now() = 0;

    /// The reading in whole milliseconds.
    std::int64_t milliseconds() { return std::chrono::duration_cast<std::chrono::milliseconds>(now()).count(); }

    /// Waits without dispatching events until the reading in whole milliseconds has moved on.
    virtual void waitForNextMillisecond() = 0;

    /// While stepped, time moves only when somebody waits for the next millisecond, so what is timed by that comes
    /// before whatever a board delivers then. A clock of real time goes on.
    virtual void setStepped(bool stepped) { (void)stepped; }

    /// Waits until `time` is over (now() > time) or `stop` is requested; the boards' threads call this. Strictly over,
    /// so that whatever was done at `time` itself has happened when a board looks.
    virtual void waitUntil(std::chrono::nanoseconds time, std::stop_token stop) = 0;
};

} // namespace tavex2
