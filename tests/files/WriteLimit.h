#pragma once

#include <csignal>
#include <sys/resource.h>

namespace tavex2::test {

/// As long as it lives, this process can write no file beyond `bytes`: what a disk does that takes no more.
class WriteLimit {
  public:
    explicit WriteLimit(rlim_t bytes) : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{bytes, m_old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~WriteLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    WriteLimit(const WriteLimit&) = delete;
    WriteLimit& operator=(const WriteLimit&) = delete;

  private:
    rlimit m_old{};
    void (*m_oldHandler)(int);
};

} // namespace tavex2::test
