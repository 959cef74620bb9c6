#pragma once

#include <cstdint>

namespace tavex2 {

/// What the board is used for. One machine; the legal moves are those of canEnter().
enum class RunPhase {
    Idle,      ///< nothing
    Preparing, ///< a collection: configuring the board, asking the user
    Pausing,   ///< a collection: waiting for the start delay
    Waiting,   ///< a collection: waiting for the trigger
    Acquiring, ///< a collection: the trial is being taken
    RealTime,  ///< the channels are watched and nothing is stored
};

inline constexpr int runPhases = 6;

/// Whether the machine may go from one phase to another. Every phase may fall back to Idle.
constexpr bool canEnter(RunPhase from, RunPhase to) {
    switch (to) {
    case RunPhase::Idle:
        return true;
    case RunPhase::Preparing:
    case RunPhase::RealTime:
        return from == RunPhase::Idle;
    case RunPhase::Pausing:
        return from == RunPhase::Preparing;
    case RunPhase::Waiting:
        return from == RunPhase::Preparing || from == RunPhase::Pausing;
    case RunPhase::Acquiring:
        return from == RunPhase::Preparing || from == RunPhase::Pausing || from == RunPhase::Waiting;
    }
    return false;
}

/// A collection is in progress.
constexpr bool collecting(RunPhase phase) {
    return phase != RunPhase::Idle && phase != RunPhase::RealTime;
}

/// What a run is like at the moment: all that windows and the command line show of it. Written by the run controller
/// alone.
struct RunStatus {
    RunPhase phase = RunPhase::Idle;
    bool stopEnabled = false;      ///< "Stop" has something to stop, or what a cancelled reset prompt left behind
    bool asking = false;           ///< the Stop question is open
    int trialsTaken = 0;           ///< of the collection in progress
    int repeats = 1;               ///< that the collection will take
    double repeat = 0;             ///< the one in progress, as counted by the board; 0 before it has begun
    std::int64_t scans = 0;        ///< of the trial in progress that have arrived
    std::int64_t scansOfTrial = 0; ///< that it will have; 0 while nothing is known
    double rateHz = 0;

    /// A collection runs of which no trial has arrived yet.
    bool awaitsFirstTrial() const { return collecting(phase) && trialsTaken == 0; }
};

/// How a collection ended.
enum class RunOutcome {
    None,      ///< there was none
    Completed, ///< every trial arrived
    Stopped,   ///< the user stopped or cancelled it
    Refused,   ///< the board refused it
    Failed,    ///< the board failed while it ran
    NoBoard,   ///< debug mode: nothing was driven
};

} // namespace tavex2
