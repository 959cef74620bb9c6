#pragma once

#include "platform/SoundOutput.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

namespace tavex2 {

/// Plays through the system's sound server, or through the sound card where there is none. A thread of its own talks to
/// them, so that a slow server holds nobody up; the output is opened with the first sound and kept open for the next
/// ones. One of these at a time; made, called and destroyed on one thread.
class SdlSound final : public SoundOutput {
  public:
    /// Looks for output devices; that there are none, or no sound system at all, is no error.
    SdlSound();
    ~SdlSound() override;
    SdlSound(const SdlSound&) = delete;
    SdlSound& operator=(const SdlSound&) = delete;

    int deviceCount() const override { return m_devices; }
    void playFile(const std::filesystem::path& path) override;
    void finishPlaying(std::chrono::milliseconds longest) override;

  private:
    void work(const std::stop_token& stop);

    int m_devices = 0;
    std::mutex m_mutex; ///< guards what follows
    std::condition_variable_any m_changed;
    std::optional<std::filesystem::path> m_asked; ///< the file to be played next
    bool m_busy = false;                          ///< the thread is about to play
    std::chrono::steady_clock::time_point m_silentFrom{};
    std::jthread m_thread;
};

} // namespace tavex2
