#include "acquisition/records/TrialBuffers.h"

#include <algorithm>
#include <limits>

namespace tavex2 {

namespace {

bool sameShape(const TrialArray& a, const TrialArray& b) {
    return a.channels() == b.channels() && a.samples() == b.samples();
}

/// A float64 array of the trial's shape holding, per sample, `combine(index, volts)`.
template <class Combine>
Result<TrialArray> transformed(const TrialArray& trial, Combine combine) {
    Result<TrialArray> result =
        TrialArray::allocate(ElementType::Float64, trial.rank(), trial.channels(), trial.samples());
    if (!result) return result;
    for (int channel = 0; channel < trial.channels(); ++channel) {
        const std::span<double> out = result.value().doubles(channel);
        trial.visitChannel(channel, [&](auto samples) {
            for (std::size_t i = 0; i < out.size(); ++i)
                out[i] = combine(channel, i, static_cast<double>(samples[i]));
        });
    }
    return result;
}

} // namespace

Result<void> AddTrialToAverage(TrialAverage& average, const Trial& trial) {
    const bool continues = average.AverageCount > 0 && SettingsCompatible(trial.sampling, average.AverageSettings) &&
                           sameShape(*trial.samples, *average.AverageSum);
    if (continues && average.AverageCount == std::numeric_limits<std::int16_t>::max())
        return Error{ErrorKind::InvalidValue,
                     "The average already holds 32767 trials and cannot take another. Use Clear Average to start a new "
                     "one."};

    const TrialArray* sum = continues ? average.AverageSum.get() : nullptr;
    Result<TrialArray> next =
        sum != nullptr ? transformed(*trial.samples, [sum](int channel, std::size_t i,
                                                           double volts) { return sum->doubles(channel)[i] + volts; })
                       : transformed(*trial.samples, [](int, std::size_t, double volts) { return volts; });
    if (!next) return next.error();

    average.AverageSum = std::make_shared<const TrialArray>(std::move(next).value());
    average.AverageCount = static_cast<std::int16_t>(continues ? average.AverageCount + 1 : 1);
    if (continues) return {};
    average.AverageSettings = trial.sampling;
    average.first = trial.name;
    return {};
}

void ClearAverage(TrialAverage& average) {
    average = {.AverageSum = nullptr, .AverageCount = 0, .AverageSettings = average.AverageSettings, .first = {}};
}

} // namespace tavex2
