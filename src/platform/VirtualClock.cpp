#include "platform/VirtualClock.h"

#include <algorithm>

namespace tavex2 {

std::chrono::nanoseconds VirtualClock::now() {
    const std::lock_guard lock(m_mutex);
    return m_now;
}

void VirtualClock::waitForNextMillisecond() {
    {
        const std::lock_guard lock(m_mutex);
        m_now = std::chrono::floor<std::chrono::milliseconds>(m_now) + std::chrono::milliseconds(1);
    }
    m_moved.notify_all();
}

void VirtualClock::waitUntil(std::chrono::nanoseconds time, std::stop_token stop) {
    std::unique_lock lock(m_mutex);
    const bool over = m_moved.wait(lock, stop, [&] { return (m_free && !m_stepped) || m_now > time; });
    if (over) m_now = std::max(m_now, time);
}

void VirtualClock::setStepped(bool stepped) {
    {
        const std::lock_guard lock(m_mutex);
        m_stepped = stepped;
    }
    m_moved.notify_all();
}

void VirtualClock::setFreeRunning(bool free) {
    {
        const std::lock_guard lock(m_mutex);
        m_free = free;
    }
    m_moved.notify_all();
}

} // namespace tavex2
