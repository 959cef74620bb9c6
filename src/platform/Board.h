#pragma once

#include "platform/DaqStatus.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tavex2 {

/// What a board is and can do. Fixed for the life of the board.
struct BoardDescription {
    std::string name;         ///< for people, e.g. "Simulated board"
    std::string spec;         ///< how to ask for it, e.g. "simulator:seed=7"
    int inputs = 0;           ///< analog inputs, numbered 0 .. inputs - 1
    double lowestRateHz = 1;  ///< scans per second
    double highestRateHz = 0; ///< scans per second, for one channel as for all of them
    double lowestVolts = -10; ///< widest input range
    double highestVolts = 10;
    int digitalLines = 0;       ///< digital output lines, 0 when there are none
    bool appliesLimits = false; ///< limits the samples to the configured voltage range itself
};

/// How a board is to deliver scans.
struct StreamConfig {
    std::vector<int> channels; ///< inputs in the order in which they are sampled; an input may stand twice
    double rateHz = 0;
    double lowerVolts = -10;
    double upperVolts = 10;
};

/// What one read gave.
struct BoardRead {
    std::int64_t scans = 0;           ///< whole scans written to the front of the buffer, also when the read failed
    DaqStatus status = DaqStatus::Ok; ///< Overrun or DeviceVanished end the run
    std::string context;              ///< where it happened, for the user; empty on success
};

/// What a refusal says: a code of the table and, where the board knows more, a sentence about this case.
struct DaqOutcome {
    DaqStatus status = DaqStatus::Ok;
    std::string detail;
    bool ok() const { return status == DaqStatus::Ok; }
};

/// One A/D board. Everything that a board lacks (trigger, pre-trigger scans, limits, cutting into trials) is done by
/// CWAI in software, so a new board has to fill in only these calls.
class Board {
  public:
    virtual ~Board() = default;

    /// Never blocks, never changes.
    virtual const BoardDescription& description() const = 0;

    /// Says whether the board can deliver this stream; changes nothing. User-interface thread, board idle.
    virtual DaqOutcome check(const StreamConfig& config) const = 0;

    /// Starts delivering at once; scan 0 is taken now. User-interface thread.
    virtual DaqOutcome start(const StreamConfig& config) = 0;

    /// Blocks until `interleaved` is full (whole scans, channel after channel in volts), the board fails or stop() is
    /// called; gives what has arrived until then. Acquisition thread, between start() and stop().
    virtual BoardRead read(std::span<double> interleaved) = 0;

    /// Ends the stream and wakes a blocked read(). Any thread; without effect on an idle board.
    virtual void stop() = 0;

    /// Sets the digital output lines, bit i = line i, at once. User-interface thread, also while a stream runs.
    virtual void writeDigital(std::uint8_t value) = 0;
};

} // namespace tavex2
