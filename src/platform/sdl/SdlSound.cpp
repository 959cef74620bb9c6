#include "platform/sdl/SdlSound.h"

#include "base/PathText.h"
#include "platform/SystemSound.h"

// The library's own main is for programs that it starts.
#define SDL_MAIN_HANDLED
#include <SDL.h>
#include <algorithm>
#include <cstdint>
#include <utility>

namespace tavex2 {

namespace {

/// What the server and the card still hold when the last sample has been handed over.
constexpr std::chrono::milliseconds outputLatency{200};

/// A sound read from a file.
class LoadedSound {
  public:
    explicit LoadedSound(const std::filesystem::path& path) {
        if (SDL_LoadWAV(pathText(path).c_str(), &m_format, &m_data, &m_bytes) == nullptr) m_data = nullptr;
    }
    ~LoadedSound() { SDL_FreeWAV(m_data); }
    LoadedSound(const LoadedSound&) = delete;
    LoadedSound& operator=(const LoadedSound&) = delete;

    bool usable() const { return m_data != nullptr && m_bytes > 0; }
    const SDL_AudioSpec& format() const { return m_format; }
    const Uint8* data() const { return m_data; }
    Uint32 bytes() const { return m_bytes; }

    std::chrono::milliseconds length() const {
        const Uint32 bytesPerSecond =
            static_cast<Uint32>(m_format.freq) * m_format.channels * (SDL_AUDIO_BITSIZE(m_format.format) / 8U);
        return std::chrono::milliseconds(std::uint64_t{m_bytes} * 1000 / bytesPerSecond);
    }

  private:
    SDL_AudioSpec m_format{};
    Uint8* m_data = nullptr;
    Uint32 m_bytes = 0;
};

/// The output, opened for one format and kept until another is needed or the device has gone.
class Output {
  public:
    Output() = default;
    ~Output() { close(); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// False when no device takes the sound.
    bool play(const LoadedSound& sound) {
        if (m_device != 0 && (SDL_GetAudioDeviceStatus(m_device) == SDL_AUDIO_STOPPED || !sameFormat(sound.format())))
            close();
        if (m_device == 0 && !open(sound.format())) return false;
        SDL_ClearQueuedAudio(m_device);
        return SDL_QueueAudio(m_device, sound.data(), sound.bytes()) == 0;
    }

  private:
    bool open(const SDL_AudioSpec& format) {
        SDL_AudioSpec wanted = format;
        wanted.samples = 256; // a small buffer, for a small latency
        m_format = format;
        m_device = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
        if (m_device != 0) SDL_PauseAudioDevice(m_device, 0);
        return m_device != 0;
    }
    void close() {
        if (m_device != 0) SDL_CloseAudioDevice(m_device);
        m_device = 0;
    }
    bool sameFormat(const SDL_AudioSpec& format) const {
        return format.freq == m_format.freq && format.format == m_format.format && format.channels == m_format.channels;
    }

    SDL_AudioSpec m_format{};
    SDL_AudioDeviceID m_device = 0;
};

} // namespace

SdlSound::SdlSound() {
    // Ctrl+C belongs to the program.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return;
    m_devices = std::max(SDL_GetNumAudioDevices(0), 0);
    if (m_devices > 0)
        m_thread = std::jthread([this](const std::stop_token& stop) { work(stop); });
    else
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

SdlSound::~SdlSound() {
    if (!m_thread.joinable()) return;
    m_thread.request_stop();
    m_thread.join();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

void SdlSound::playFile(const std::filesystem::path& path) {
    const std::lock_guard lock(m_mutex);
    m_asked = path;
    m_changed.notify_all();
}

void SdlSound::finishPlaying(std::chrono::milliseconds longest) {
    if (m_devices == 0) return;
    const auto giveUp = std::chrono::steady_clock::now() + longest;
    std::unique_lock lock(m_mutex);
    m_changed.wait_until(lock, giveUp, [this] { return !m_asked && !m_busy; });
    const auto end = std::min(giveUp, m_silentFrom);
    lock.unlock();
    std::this_thread::sleep_until(end);
}

void SdlSound::work(const std::stop_token& stop) {
    Output output;
    std::unique_lock lock(m_mutex);
    while (m_changed.wait(lock, stop, [this] { return m_asked.has_value(); })) {
        const std::filesystem::path path = *std::exchange(m_asked, std::nullopt);
        m_busy = true;
        lock.unlock();
        const LoadedSound sound(path);
        const bool played = sound.usable() && output.play(sound);
        lock.lock();
        m_busy = false;
        if (played) m_silentFrom = std::chrono::steady_clock::now() + sound.length() + outputLatency;
        m_changed.notify_all();
    }
}

std::unique_ptr<SoundOutput> systemSound() {
    return std::make_unique<SdlSound>();
}

} // namespace tavex2
