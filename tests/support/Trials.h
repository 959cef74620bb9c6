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

/// A freshly collected trial of these samples, as the run controller makes it.
inline std::shared_ptr<Trial> collectedTrial(const ProgramState& state, TrialData samples, std::int32_t rateHz = 1000,
                                             const std::string& name = "Trial0001") {
    auto trial = std::make_shared<Trial>();
    trial->name = name;
    trial->number = state.settings.setup.TrialNumber;
    trial->header = state.header;
    trial->infoA = state.infoA;
    trial->infoB = state.infoB;
    trial->comments = state.comments;
    SamplingSettings& taken = trial->sampling;
    taken = state.settings.sampling;
    taken.Rate = rateHz;
    taken.NumChannels = static_cast<std::int16_t>(samples->channels());
    taken.NumSamples = static_cast<std::int32_t>(samples->samples());
    taken.Duration = static_cast<float>(taken.NumSamples - 1) / static_cast<float>(rateHz);
    trial->samples = std::move(samples);
    return trial;
}

/// Puts such a trial into the state.
inline void collect(ProgramState& state, TrialData samples, std::int32_t rateHz = 1000,
                    const std::string& name = "Trial0001") {
    state.trials.CurrentTrial = collectedTrial(state, std::move(samples), rateHz, name);
}

} // namespace tavex2::test
