#pragma once

namespace tavex2 {

/// While one of these lives, threads that sleep wake up within a millisecond or so of the time that they asked for,
/// also on systems that usually take more.
class TimerResolution {
  public:
    TimerResolution();
    ~TimerResolution();
    TimerResolution(const TimerResolution&) = delete;
    TimerResolution& operator=(const TimerResolution&) = delete;
};

} // namespace tavex2
