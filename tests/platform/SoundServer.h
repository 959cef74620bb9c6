#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace tavex2::test {

/// An environment variable that has a value as long as this lives.
class ScopedEnvironment {
  public:
    ScopedEnvironment(std::string name, const std::string& value) : m_name(std::move(name)) {
        if (const char* before = std::getenv(m_name.c_str())) m_before = before;
        ::setenv(m_name.c_str(), value.c_str(), 1);
    }
    ~ScopedEnvironment() {
        if (m_before)
            ::setenv(m_name.c_str(), m_before->c_str(), 1);
        else
            ::unsetenv(m_name.c_str());
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

  private:
    std::string m_name;
    std::optional<std::string> m_before;
};

/// A sound server with a null sink and a socket of its own in `folder`; this process and its children play on it, and
/// nobody else's server is touched. Ends with the object.
class SoundServer {
  public:
    explicit SoundServer(const std::filesystem::path& folder);
    ~SoundServer() { kill(); }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    bool running() const { return m_running; }
    const std::string& address() const { return m_address; }
    const std::filesystem::path& folder() const { return m_folder; }
    /// Ends the server at once, as a crash would.
    void kill();

  private:
    std::filesystem::path m_folder;
    std::string m_address;
    ScopedEnvironment m_runtime;
    ScopedEnvironment m_server;
    pid_t m_pid = -1;
    bool m_running = false;
};

/// What came out of the sink.
struct Heard {
    double seconds = 0;         ///< from the first loud sample to the last
    double frequencyHz = 0;     ///< of the loud part
    double lastFrequencyHz = 0; ///< of its last tenth of a second
    double loudest = 0;         ///< 0..1
};

/// Records a server's sink from its making on.
class Listener {
  public:
    explicit Listener(const SoundServer& server);
    ~Listener() { end(); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Waits until it records.
    bool hears();
    /// Waits until something else than silence has been recorded.
    bool waitForSound();
    /// Ends the recording and measures it.
    Heard stop();

  private:
    std::vector<float> samples() const;
    void end();

    std::filesystem::path m_file;
    pid_t m_pid = -1;
};

} // namespace tavex2::test
