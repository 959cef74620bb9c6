#pragma once

#include "acquisition/records/ProgramState.h"
#include "base/Result.h"
#include "platform/CWAI.h"

#include <cstdint>
#include <string>

namespace tavex2 {

/// What a collection does, fixed at its start: whatever the user changes while it runs applies to the next one. Only
/// autosave and comments are asked for anew with each trial, because they are about trials that are there already.
struct RunPlan {
    bool driven = true;        ///< False in debug mode: the board is neither configured nor started
    std::string name;          ///< of the first trial; see nameOf()
    std::int16_t number = 0;   ///< the trial number
    std::string source;        ///< name of the board
    AnalogInputConfig input;   ///< channels, rate, limits, repeats, start condition
    SamplingSettings sampling; ///< the same as settings, with the stimulus lines
    TriggerSettings trigger;
    bool askToReset = false;
    std::int64_t startDelayMs = 0;
    bool toneBefore = false;
    bool toneAfter = false;
    int randomRatio = 0; ///< the tone after a trial sounds on about one in so many

    bool triggered() const { return input.start.type != StartCondition::Type::None; }

    /// Each repeat has a name of its own, so that none overwrites another's file: "Trial0001", "Trial0001-r2" ...
    std::string nameOf(int repeat) const;
};

/// The plan of the collection that would start now, under the next trial number. `start` is the start condition that
/// was confirmed last. Errors InvalidValue, with a sentence for the user: settings that no collection can be made with,
/// and a trial number above 32767.
Result<RunPlan> planRun(const ProgramState& state, const StartCondition& start);

} // namespace tavex2
