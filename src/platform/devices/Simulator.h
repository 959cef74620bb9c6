#pragma once

#include "base/Result.h"
#include "platform/Board.h"
#include "platform/devices/Pacing.h"
#include "platform/devices/SimulatedSignals.h"

#include <cstdint>
#include <mutex>
#include <string_view>
#include <vector>

namespace tavex2 {

/// How a simulated board is to be.
struct SimulatorOptions {
    /// Ways to misbehave, so that what the program does about it can be tried and tested.
    enum class Fault {
        None,
        RefuseConfiguration,
        RefuseToOpen,
        Overrun, ///< after faultAfterScans scans
        Vanish,  ///< after faultAfterScans scans
    };

    std::uint64_t seed = 1;
    int inputs = 64;
    Fault fault = Fault::None;
    std::int64_t faultAfterScans = 0;
};

/// Reads options such as "seed=7,inputs=16,fail=vanish@2000"; an empty text gives the defaults. The faults are refuse,
/// open, overrun@SCANS and vanish@SCANS. The InvalidValue error names the option.
Result<SimulatorOptions> parseSimulatorOptions(std::string_view text);

/// The board that is always there: steady, seeded, realistic signals of a different kind per input, a 16-bit quantiser
/// over the configured limits, and eight digital output lines. The last three inputs are wired to lines 0 to 2 (0 or
/// 5 V), so that a stimulus pulse can be seen.
///
/// A sample depends on the seed, the number of the start, the input, the scan's number, the rate, the limits and the
/// digital writes alone, never on how it is read. Each start has noise of its own.
class Simulator final : public Board {
  public:
    Simulator(const SimulatorOptions& options, std::string spec, MillisecondClock& clock);

    const BoardDescription& description() const override { return m_description; }
    DaqOutcome check(const StreamConfig& config) const override;
    DaqOutcome start(const StreamConfig& config) override;
    BoardRead read(std::span<double> interleaved) override;
    void stop() override { m_pacing.end(); }
    void writeDigital(std::uint8_t value) override;

  private:
    struct DigitalWrite {
        std::chrono::nanoseconds time;
        std::uint8_t value;
    };

    void generate(std::span<double> interleaved);
    void loopBack(std::span<double> interleaved);
    double quantised(double volts) const;

    SimulatorOptions m_options;
    BoardDescription m_description;
    Pacing m_pacing;
    StreamConfig m_stream;
    std::vector<SimulatedSignal> m_signals; ///< of the stream's channels
    std::uint64_t m_starts = 0;
    std::int64_t m_nextScan = 0;
    double m_voltsPerStep = 0;

    std::mutex m_digitalMutex;
    std::vector<DigitalWrite> m_digitalWrites; ///< oldest first; the first is in force before the next scan
};

} // namespace tavex2
