#pragma once

#include <chrono>
#include <filesystem>

namespace tavex2 {

/// The system's wave output.
class SoundOutput {
  public:
    virtual ~SoundOutput() = default;

    /// Number of wave-output devices; 0 means that nothing can be played.
    virtual int deviceCount() const = 0;

    /// Starts playing a WAVE file and returns at once; a missing or unreadable file is silent.
    /// Cuts off a sound that still plays.
    virtual void playFile(const std::filesystem::path& path) = 0;

    /// Waits until what was started has sounded, for at most `longest`.
    virtual void finishPlaying(std::chrono::milliseconds longest) = 0;
};

/// A machine without sound: no device, nothing is played.
class NoSound final : public SoundOutput {
  public:
    int deviceCount() const override { return 0; }
    void playFile(const std::filesystem::path&) override {}
    void finishPlaying(std::chrono::milliseconds) override {}
};

} // namespace tavex2
