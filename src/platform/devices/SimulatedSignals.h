#pragma once

#include <array>
#include <cstdint>

namespace tavex2 {

/// The signal at one input of the simulated board: a kind that depends on the input's number (sine, heart, muscle,
/// force plate, noise, sweep, pulses, breathing), with rates and sizes that vary a little from input to input. Values
/// are functions of the scan's number, so they can be asked for in any order.
class SimulatedSignal {
  public:
    /// `seed` and `input` decide the noise.
    SimulatedSignal(std::uint64_t seed, int input, double rateHz);

    /// Volts at a scan.
    double at(std::int64_t scan) const;

    int input() const { return m_input; }

  private:
    enum class Kind { Sine, Heart, Muscle, ForcePlate, Noise, Sweep, Pulses, Breathing };
    static constexpr int kinds = 8;

    double noise(std::int64_t scan) const;

    int m_input;
    Kind m_kind;
    double m_scale; ///< grows a little from each group of eight inputs to the next
    double m_rateHz;
    std::uint64_t m_noiseSeed;
};

} // namespace tavex2
