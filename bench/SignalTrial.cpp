#include "SignalTrial.h"

#include "platform/devices/SndfileSignal.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <vector>

namespace tavex2::bench {

namespace {

/// Numbers that look random and are the same on every machine.
class Random {
  public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t bits() {
        m_state += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = (m_state ^ (m_state >> 32)) * 0xD6E8FEB86659FD93U;
        mixed = (mixed ^ (mixed >> 32)) * 0xD6E8FEB86659FD93U;
        return mixed ^ (mixed >> 32);
    }

  private:
    std::uint64_t m_state;
};

/// Bell-shaped, with a standard deviation of about 1: the bits that are set among 64.
double noise(std::uint64_t bits) {
    return (std::popcount(bits) - 32) / 4.0;
}

template <class T>
void fill(std::span<T> samples, int channel) {
    constexpr double noiseVolts = 0.04;
    constexpr double spikeVolts = 2.5;
    constexpr std::uint64_t samplesPerSpike = 50'000;
    Random random(static_cast<std::uint64_t>(channel) + 1);
    const double length = static_cast<double>(samples.size());
    const double level = -7.5 + channel % 16;
    const double turn = 2 * std::numbers::pi;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double share = static_cast<double>(i) / length;
        const double curve = std::sin(turn * (3 + channel) * share) + 0.4 * std::sin(turn * 171.3 * share + channel) +
                             0.15 * std::sin(turn * static_cast<double>(i) / 97);
        double volts = level + curve + noiseVolts * noise(random.bits());
        if (const std::uint64_t chance = random.bits(); chance % samplesPerSpike == 0)
            volts += chance & 1 << 20 ? spikeVolts : -spikeVolts;
        samples[i] = static_cast<T>(std::clamp(volts, -10.0, 10.0));
    }
}

TrialArray allocated(ElementType type, int channels, std::int64_t samples) {
    Result<TrialArray> array = TrialArray::allocate(type, 2, channels, samples);
    if (!array) throw std::runtime_error(array.error().text);
    return std::move(array).value();
}

} // namespace

TrialData madeUpTrial(ElementType type, int channels, std::int64_t samples) {
    TrialArray array = allocated(type, channels, samples);
    for (int channel = 0; channel < channels; ++channel) {
        if (type == ElementType::Float32)
            fill(array.floats(channel), channel);
        else
            fill(array.doubles(channel), channel);
    }
    return std::make_shared<const TrialArray>(std::move(array));
}

TrialData recordedTrial(const std::filesystem::path& file, int channels, std::int64_t samples) {
    Result<std::unique_ptr<RecordedSignal>> opened = openSndfileSignal(file);
    if (!opened) throw std::runtime_error(opened.error().text);
    RecordedSignal& signal = *opened.value();
    const auto signals = static_cast<std::size_t>(signal.channels());
    const auto scans = static_cast<std::size_t>(signal.scans());
    std::vector<double> recording(signals * scans);
    if (const Result<void> read = signal.read(0, recording); !read) throw std::runtime_error(read.error().text);

    TrialArray array = allocated(ElementType::Float64, channels, samples);
    for (std::size_t channel = 0; channel < static_cast<std::size_t>(channels); ++channel) {
        const std::span<double> row = array.doubles(static_cast<int>(channel));
        const std::size_t start = channel / signals * (scans / 3);
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = recording[(start + i) % scans * signals + channel % signals];
    }
    return std::make_shared<const TrialArray>(std::move(array));
}

} // namespace tavex2::bench
