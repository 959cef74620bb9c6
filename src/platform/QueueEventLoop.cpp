#include "platform/QueueEventLoop.h"

#include <algorithm>
#include <utility>

namespace tavex2 {

void QueueEventLoop::post(std::function<void()> event) {
    {
        const std::lock_guard lock(m_mutex);
        m_queue.push_back(std::move(event));
    }
    m_posted.notify_one();
}

void QueueEventLoop::after(std::chrono::milliseconds time, std::function<void()> event) {
    m_timed.push_back({m_clock.now() + time, std::move(event)});
}

std::function<void()> QueueEventLoop::takePosted() {
    const std::lock_guard lock(m_mutex);
    if (m_queue.empty()) return {};
    std::function<void()> event = std::move(m_queue.front());
    m_queue.pop_front();
    return event;
}

std::function<void()> QueueEventLoop::takeDue() {
    const auto first = std::ranges::min_element(m_timed, {}, &Timed::due);
    if (first == m_timed.end() || m_clock.now() < first->due) return {};
    std::function<void()> event = std::move(first->event);
    m_timed.erase(first);
    return event;
}

bool QueueEventLoop::runUntil(const std::function<bool()>& done, std::chrono::milliseconds longest) {
    const auto deadline = std::chrono::steady_clock::now() + longest;
    while (!done()) {
        std::function<void()> event = takePosted();
        if (!event) event = takeDue();
        if (event) {
            event();
            continue;
        }
        if (std::chrono::steady_clock::now() >= deadline) return false;
        if (!m_timed.empty()) {
            m_clock.waitForNextMillisecond();
            continue;
        }
        std::unique_lock lock(m_mutex);
        if (!m_posted.wait_until(lock, deadline, [this] { return !m_queue.empty(); })) return false;
    }
    return true;
}

} // namespace tavex2
