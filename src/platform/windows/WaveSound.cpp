#include "platform/SystemSound.h"
#include "platform/windows/WindowsHeader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <mmsystem.h>
#include <thread>

namespace tavex2 {

namespace {

using Clock = std::chrono::steady_clock;

/// How long a WAVE file with the usual head sounds; nothing for any other file.
std::chrono::milliseconds lengthOf(const std::filesystem::path& path) {
    constexpr std::size_t headBytes = 44;
    std::array<char, headBytes> head{};
    std::ifstream file(path, std::ios::binary);
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(path, error);
    if (!file.read(head.data(), headBytes) || error) return {};
    std::uint32_t bytesPerSecond = 0;
    std::memcpy(&bytesPerSecond, head.data() + 28, sizeof bytesPerSecond);
    return std::chrono::milliseconds(bytesPerSecond > 0 ? (bytes - headBytes) * 1000 / bytesPerSecond : 0);
}

/// The multimedia calls of the system.
class WaveSound final : public SoundOutput {
  public:
    int deviceCount() const override { return static_cast<int>(::waveOutGetNumDevs()); }

    void playFile(const std::filesystem::path& path) override {
        if (::sndPlaySoundW(path.c_str(), SND_ASYNC | SND_NODEFAULT) != 0) m_silentFrom = Clock::now() + lengthOf(path);
    }

    void finishPlaying(std::chrono::milliseconds longest) override {
        std::this_thread::sleep_until(std::min(Clock::now() + longest, m_silentFrom));
    }

  private:
    Clock::time_point m_silentFrom{};
};

} // namespace

std::unique_ptr<SoundOutput> systemSound() {
    return std::make_unique<WaveSound>();
}

} // namespace tavex2
