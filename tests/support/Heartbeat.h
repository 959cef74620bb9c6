#pragma once

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>

namespace tavex2::test {

/// A timer on the window's thread that notes how long it was kept waiting. The time by the clock is what a user waits;
/// it grows when other programs have the processor. The thread's own work does not, so a test can set a limit to it.
class Heartbeat {
  public:
    std::function<void()> onBeat; ///< is called at each beat

    Heartbeat() {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { beat(); });
        m_timer.start(std::chrono::milliseconds(2));
    }
    Heartbeat(const Heartbeat&) = delete;
    Heartbeat& operator=(const Heartbeat&) = delete;

    int beats() const { return m_beats; }
    /// The longest time between two beats, by the clock.
    double longestGapMs() const { return m_longestGapMs; }
    /// The longest time that the thread worked between two beats.
    double longestWorkMs() const { return m_longestWorkMs; }

  private:
    static double milliseconds(clockid_t clock) {
        timespec now{};
        clock_gettime(clock, &now);
        return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
    }
    void beat() {
        const double now = milliseconds(CLOCK_MONOTONIC);
        const double worked = milliseconds(CLOCK_THREAD_CPUTIME_ID);
        m_longestGapMs = std::max(m_longestGapMs, now - m_lastMs);
        m_longestWorkMs = std::max(m_longestWorkMs, worked - m_lastWorkedMs);
        m_lastMs = now;
        m_lastWorkedMs = worked;
        ++m_beats;
        if (onBeat) onBeat();
    }

    QTimer m_timer;
    double m_lastMs = milliseconds(CLOCK_MONOTONIC);
    double m_lastWorkedMs = milliseconds(CLOCK_THREAD_CPUTIME_ID);
    double m_longestGapMs = 0;
    double m_longestWorkMs = 0;
    int m_beats = 0;
};

} // namespace tavex2::test
