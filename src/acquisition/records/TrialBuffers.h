#pragma once

#include "acquisition/records/Trial.h"
#include "base/Result.h"

#include <cstdint>
#include <string>

namespace tavex2 {

/// The running average of saved trials.
struct TrialAverage {
    TrialData AverageSum;             ///< element-wise sum (float64) of its trials; empty when there are none
    std::int16_t AverageCount = 0;    ///< trials in AverageSum
    SamplingSettings AverageSettings; ///< how its first trial was taken
    std::string first;                ///< name of its first trial

    bool empty() const { return AverageCount == 0 || !AverageSum; }
};

/// The current, last and averaged trial.
struct TrialBuffers {
    TrialPtr CurrentTrial; ///< empty until the first trial
    TrialPtr LastTrial;    ///< what CurrentTrial was when the last collection started
    TrialAverage average;
};

/// Adds a trial to the average; an incompatible trial (or one of another shape) starts a new average with itself.
/// Errors: InvalidValue when the average already holds 32767 trials, OutOfMemory; nothing has changed then.
Result<void> AddTrialToAverage(TrialAverage& average, const Trial& trial);

/// Empties the average.
void ClearAverage(TrialAverage& average);

} // namespace tavex2
