#pragma once

#include <filesystem>

namespace tavex2 {

/// The system's wave output.
class SoundOutput {
  public:
    virtual ~SoundOutput() = default;

    /// Number of wave-output devices; 0 means that nothing can be played.
    virtual int deviceCount() const = 0;

    /// Starts playing a WAVE file and returns at once; a missing or unreadable file is silent.
    virtual void playFile(const std::filesystem::path& path) = 0;
};

/// A machine without sound: no device, nothing is played.
class NoSound final : public SoundOutput {
  public:
    int deviceCount() const override { return 0; }
    void playFile(const std::filesystem::path&) override {}
};

} // namespace tavex2
