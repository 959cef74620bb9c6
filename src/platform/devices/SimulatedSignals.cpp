#include "platform/devices/SimulatedSignals.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace tavex2 {

namespace {

constexpr double twoPi = 2 * std::numbers::pi;

/// A hash of 64 bits that spreads consecutive numbers over the whole range (the finaliser published as SplitMix64).
std::uint64_t spread(std::uint64_t x) {
    x += 0x9E3779B97F4A7C15ULL;
    x = (x ^ (x >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    x = (x ^ (x >> 27U)) * 0x94D049BB133111EBULL;
    return x ^ (x >> 31U);
}

/// The part of a period that has passed, 0 to 1.
double phase(double seconds, double periodSeconds) {
    const double periods = seconds / periodSeconds;
    return periods - std::floor(periods);
}

/// One heart beat over its period, 0 to 1, as the sum of five bell curves: the waves P, Q, R, S and T.
double heartWave(double u) {
    struct Wave {
        double centre, width, height;
    };
    constexpr std::array waves{Wave{0.20, 0.025, 0.15}, Wave{0.34, 0.010, -0.12}, Wave{0.365, 0.011, 1.0},
                               Wave{0.39, 0.010, -0.25}, Wave{0.60, 0.040, 0.30}};
    double sum = 0;
    for (const Wave& wave : waves) {
        const double x = (u - wave.centre) / wave.width;
        sum += wave.height * std::exp(-0.5 * x * x);
    }
    return sum;
}

/// heartWave() in a table, because exponentials are too slow for many channels at a high rate.
class HeartTable {
  public:
    HeartTable() {
        for (std::size_t i = 0; i < m_values.size(); ++i)
            m_values[i] = heartWave(static_cast<double>(i) / static_cast<double>(steps));
    }
    double at(double u) const {
        const double place = u * steps;
        const auto index = static_cast<std::size_t>(place);
        const double rest = place - static_cast<double>(index);
        return m_values[index] + rest * (m_values[index + 1] - m_values[index]);
    }

  private:
    static constexpr int steps = 2048;
    std::array<double, steps + 2> m_values{};
};

/// Vertical force of a step on a plate while the foot is down, 0 to 1: two humps, heel and toe.
double stepForce(double u) {
    const double hump = std::sin(std::numbers::pi * u);
    return hump * (1.35 - 0.75 * hump * hump);
}

} // namespace

SimulatedSignal::SimulatedSignal(std::uint64_t seed, int input, double rateHz)
    : m_input(input), m_kind(static_cast<Kind>(input % kinds)),
      m_scale(1.0 + 0.1 * std::floor(static_cast<double>(input) / kinds)), m_rateHz(rateHz),
      m_noiseSeed(spread(seed ^ spread(static_cast<std::uint64_t>(input)))) {}

/// Noise around 0 with a standard deviation near 1: the sum of four uniform numbers.
double SimulatedSignal::noise(std::int64_t scan) const {
    const std::uint64_t bits = spread(m_noiseSeed + static_cast<std::uint64_t>(scan));
    const auto part = [bits](unsigned shift) { return static_cast<double>((bits >> shift) & 0xFFFFU); };
    constexpr double mean = 2 * 65535.0;
    constexpr double deviation = 65535.0 * 0.5774; // 65535 x sqrt(4 / 12)
    return (part(0) + part(16) + part(32) + part(48) - mean) / deviation;
}

double SimulatedSignal::at(std::int64_t scan) const {
    const double seconds = static_cast<double>(scan) / m_rateHz;
    switch (m_kind) {
    case Kind::Sine:
        return m_scale * 2.0 * std::sin(twoPi * 2.0 * m_scale * seconds) + 0.02 * noise(scan);
    case Kind::Heart: {
        static const HeartTable table;
        return 2.0 * m_scale * table.at(phase(seconds, 0.8 * m_scale)) + 0.03 * noise(scan);
    }
    case Kind::Muscle: { // bursts of 0.4 s once a second
        const double u = phase(seconds, m_scale) / 0.4;
        const double envelope = u < 1 ? std::sin(std::numbers::pi * u) : 0.0;
        return (0.02 + 0.6 * envelope * envelope) * noise(scan);
    }
    case Kind::ForcePlate: { // the foot is down for 0.7 s of 1.2 s
        const double u = (phase(seconds, 1.2 * m_scale) - 0.2) / 0.6;
        return (u > 0 && u < 1 ? 4.0 * stepForce(u) : 0.0) + 0.01 * noise(scan);
    }
    case Kind::Noise:
        return 0.3 * m_scale * noise(scan);
    case Kind::Sweep: { // 1 to 40 Hz within 2 s
        constexpr double length = 2.0;
        const double t = length * phase(seconds, length);
        return m_scale * std::sin(twoPi * (t + 0.5 * 39.0 / length * t * t)) + 0.01 * noise(scan);
    }
    case Kind::Pulses:
        return (phase(seconds, 0.25 * m_scale) < 0.1 ? 5.0 : 0.0) + 0.02 * noise(scan);
    case Kind::Breathing:
        return m_scale * std::sin(twoPi * 0.3 * seconds) + 0.1 * std::sin(twoPi * 10.0 * seconds) + 0.03 * noise(scan);
    }
    return 0;
}

} // namespace tavex2
