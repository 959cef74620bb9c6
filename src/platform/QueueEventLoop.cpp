#include "platform/QueueEventLoop.h"

#include <utility>

namespace tavex2 {

void QueueEventLoop::post(std::function<void()> event) {
    {
        const std::lock_guard lock(m_mutex);
        m_queue.push_back(std::move(event));
    }
    m_posted.notify_one();
}

void QueueEventLoop::processPending() {
    std::unique_lock lock(m_mutex);
    while (!m_queue.empty()) {
        const std::function<void()> event = std::move(m_queue.front());
        m_queue.pop_front();
        lock.unlock();
        event();
        lock.lock();
    }
}

bool QueueEventLoop::runUntil(const std::function<bool()>& done, std::chrono::milliseconds longest) {
    const auto deadline = std::chrono::steady_clock::now() + longest;
    while (!done()) {
        std::unique_lock lock(m_mutex);
        if (!m_posted.wait_until(lock, deadline, [this] { return !m_queue.empty(); })) return false;
        const std::function<void()> event = std::move(m_queue.front());
        m_queue.pop_front();
        lock.unlock();
        event();
    }
    return true;
}

} // namespace tavex2
