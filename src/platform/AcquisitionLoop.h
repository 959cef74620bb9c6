#pragma once

#include "platform/Board.h"
#include "platform/CWAI.h"
#include "platform/LatestWindow.h"
#include "platform/ScanAssembler.h"

#include <cstdint>
#include <functional>
#include <stop_token>
#include <vector>

namespace tavex2 {

/// Where the acquisition thread puts what it has; called on that thread.
struct AcquisitionEvents {
    std::function<void(AnalogBlock)> data;
    std::function<void(AnalogProgress)> progress;
    std::function<void(AnalogError)> error;
};

/// Reads a started board until every trial is taken, the board fails or a stop is requested, and stops the board.
/// Runs on the acquisition thread. `config` has been checked; `board` and `events` outlive the call.
void acquireTrials(Board& board, ScanAssembler& assembler, const AnalogInputConfig& config, const StreamConfig& stream,
                   const AcquisitionEvents& events, const std::stop_token& stop);

/// The same without end, for watching: at most 30 times a second the newest scans are handed over. Every scan is read.
void acquireContinuously(Board& board, LatestWindow& window, const StreamConfig& stream,
                         const AcquisitionEvents& events, const std::stop_token& stop);

} // namespace tavex2
