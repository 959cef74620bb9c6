#pragma once

#include "acquisition/records/TrialBuffers.h"

#include <initializer_list>
#include <utility>
#include <vector>

namespace tavex2::test {

/// A float64 trial; `volts(channel, sample)` gives its samples.
template <class Volts>
TrialData makeTrial(int channels, std::int64_t samples, Volts volts) {
    TrialArray array =
        std::move(TrialArray::allocate(ElementType::Float64, channels == 1 ? 1 : 2, channels, samples)).value();
    for (int channel = 0; channel < channels; ++channel)
        for (std::int64_t i = 0; i < samples; ++i)
            array.doubles(channel)[static_cast<std::size_t>(i)] = volts(channel, i);
    return std::make_shared<const TrialArray>(std::move(array));
}

/// A float64 trial of one channel with these samples.
inline TrialData makeTrial(const std::vector<double>& samples) {
    return makeTrial(1, static_cast<std::int64_t>(samples.size()),
                     [&samples](int, std::int64_t i) { return samples[static_cast<std::size_t>(i)]; });
}

inline SamplingSettings takenAt(std::int32_t rateHz) {
    SamplingSettings settings;
    settings.Rate = rateHz;
    return settings;
}

/// A whole trial of these samples.
inline TrialPtr trialOf(const TrialData& samples, std::int32_t rateHz) {
    auto trial = std::make_shared<Trial>();
    trial->samples = samples;
    trial->sampling = takenAt(rateHz);
    return trial;
}

} // namespace tavex2::test
