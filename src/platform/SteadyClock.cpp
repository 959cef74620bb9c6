#include "platform/SteadyClock.h"

#include <thread>

namespace tavex2 {

std::chrono::nanoseconds SteadyClock::now() {
    return std::chrono::steady_clock::now() - m_origin;
}

void SteadyClock::waitForNextMillisecond() {
    constexpr std::chrono::microseconds wakeEarly{200};
    const std::int64_t before = milliseconds();
    std::this_thread::sleep_until(m_origin + std::chrono::milliseconds(before + 1) - wakeEarly);
    while (milliseconds() == before)
        std::this_thread::yield();
}

void SteadyClock::waitUntil(std::chrono::nanoseconds time, std::stop_token stop) {
    std::unique_lock lock(m_mutex);
    while (now() <= time && !stop.stop_requested())
        m_stopped.wait_until(lock, stop, m_origin + time, [] { return false; });
}

} // namespace tavex2
