#pragma once

#include "acquisition/records/AcqSettings.h"
#include "base/TrialArray.h"

#include <cstdint>
#include <memory>

namespace tavex2 {

/// A trial as the program holds it: never changed once it has arrived, so the buffers share it instead of copying it.
using TrialData = std::shared_ptr<const TrialArray>;

/// The current, last and averaged trial.
///
/// Each trial keeps the sampling settings under which it was taken (with the channel and sample counts of its own
/// array), so settings that the user changes afterwards can neither mislabel it nor make anyone read past its end.
struct TrialBuffers {
    TrialData CurrentTrial;           ///< empty until the first trial
    SamplingSettings CurrentSettings; ///< how CurrentTrial was taken
    TrialData LastTrial;              ///< what CurrentTrial was when the last collection started
    SamplingSettings LastSettings;    ///< how LastTrial was taken
    TrialData AverageSum;             ///< element-wise sum (float64) of the trials in the average; empty when none
    std::int16_t AverageCount = 0;    ///< trials in AverageSum
    SamplingSettings AverageSettings; ///< how the first trial of the average was taken
    bool AddedToAverage = false;      ///< CurrentTrial is already part of the average
};

/// Adds `trial`, taken with `settings`, to the average; an incompatible trial (or one of another shape) starts a new
/// average with itself. Errors: InvalidValue when the average already holds 32767 trials, OutOfMemory; nothing has
/// changed then.
Result<void> AddTrialToAverage(TrialBuffers& buffers, const TrialData& trial, const SamplingSettings& settings);

/// Empties the average.
void ClearAverage(TrialBuffers& buffers);

} // namespace tavex2
