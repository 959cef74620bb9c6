#include "platform/Interruption.h"

#include <atomic>
#include <csignal>

namespace tavex2 {

namespace {

// Signals belong to the whole process, and so does what is known about them.
std::atomic<bool> asked{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may not wait");
int living = 0;

constexpr int requests[] = {
    SIGINT,
    SIGTERM,
#ifdef SIGHUP
    SIGHUP,
#endif
#ifdef SIGBREAK
    SIGBREAK,
#endif
};

void noteRequest(int) {
    asked = true;
    for (const int request : requests)
        std::signal(request, SIG_DFL);
}

} // namespace

Interruption::Interruption() {
    if (living++ > 0) return;
    asked = false;
    for (const int request : requests) {
        m_before.emplace_back(request, std::signal(request, noteRequest));
        // What the program was started to ignore, as in the background of a shell, stays ignored.
        if (m_before.back().second == SIG_IGN) std::signal(request, SIG_IGN);
    }
#ifdef SIGPIPE
    m_before.emplace_back(SIGPIPE, std::signal(SIGPIPE, SIG_IGN));
#endif
}

Interruption::~Interruption() {
    --living;
    for (const auto& [signal, handler] : m_before)
        std::signal(signal, handler);
}

bool Interruption::requested() {
    return asked;
}

} // namespace tavex2
