#pragma once

#include "acquisition/records/ProgramState.h"
#include "base/TrialArray.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tavex2::test {

/// A trial of these volts, one list a channel.
inline TrialData trialOf(const std::vector<std::vector<double>>& volts, ElementType type = ElementType::Float64,
                         int rank = 2) {
    TrialArray array = TrialArray::allocate(type, rank, static_cast<int>(volts.size()),
                                            static_cast<std::int64_t>(volts.front().size()))
                           .value();
    for (int c = 0; c < array.channels(); ++c)
        for (std::size_t i = 0; i < volts.front().size(); ++i) {
            const double each = volts[static_cast<std::size_t>(c)][i];
            if (type == ElementType::Float32)
                array.floats(c)[i] = static_cast<float>(each);
            else
                array.doubles(c)[i] = each;
        }
    return std::make_shared<const TrialArray>(std::move(array));
}

/// Puts a freshly collected trial into the state, as the run controller leaves it.
inline void collect(ProgramState& state, TrialData trial, std::int32_t rateHz = 1000) {
    SamplingSettings& taken = state.trials.CurrentSettings;
    taken = state.settings.sampling;
    taken.Rate = rateHz;
    taken.NumChannels = static_cast<std::int16_t>(trial->channels());
    taken.NumSamples = static_cast<std::int32_t>(trial->samples());
    taken.Duration = static_cast<float>(taken.NumSamples - 1) / static_cast<float>(rateHz);
    state.trials.CurrentTrial = std::move(trial);
    state.trials.AddedToAverage = false;
    state.flags.Unsaved = state.flags.TrialNotSaved = state.flags.DataPresent = true;
}

} // namespace tavex2::test
