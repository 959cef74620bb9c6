#pragma once

namespace tavex2 {

/// Where a collection is. One machine; the legal moves are those of canEnter().
enum class RunPhase {
    Idle,      ///< nothing is collected
    Preparing, ///< configuring the board, asking the user
    Pausing,   ///< waiting for the start delay
    Running,   ///< waiting for the trigger or acquiring
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

/// Whether the machine may go from one phase to another. Every phase may fall back to Idle.
constexpr bool canEnter(RunPhase from, RunPhase to) {
    switch (to) {
    case RunPhase::Idle:
        return true;
    case RunPhase::Preparing:
        return from == RunPhase::Idle;
    case RunPhase::Pausing:
        return from == RunPhase::Preparing;
    case RunPhase::Running:
        return from == RunPhase::Preparing || from == RunPhase::Pausing;
    }
    return false;
}

} // namespace tavex2
