#include "app/cli/TriggerCommand.h"

#include "acquisition/StartCondition.h"
#include "app/cli/TrialFile.h"
#include "base/Decimal.h"
#include "platform/TriggerSearch.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace tavex2 {

namespace {

/// The trigger of a collection that takes trials like this one.
LevelTrigger triggerOf(const TriggerRequest& request, const Trial& trial) {
    AcqSettings settings;
    settings.sampling = trial.sampling;
    const std::int64_t samples = trial.samples->samples();
    // What a damaged or shortened file says of its duration counts for nothing.
    if (samplesPerTrial(settings.sampling) != samples)
        settings.sampling.Duration = static_cast<float>(static_cast<double>(samples - 1) / trial.sampling.Rate);
    settings.trigger.TriggerLevel = request.levelVolts;
    settings.trigger.TriggerRising = !request.falling;
    settings.trigger.Pretrigger = request.preTriggerPercent;
    return levelTriggerFor(startConditionFor(settings, true), request.channel);
}

std::vector<std::int64_t> crossingsOf(const TrialArray& samples, const LevelTrigger& trigger) {
    std::vector<std::int64_t> crossings;
    TriggerSearch search(trigger);
    samples.visitChannel(trigger.column, [&](auto volts) {
        for (auto rest = volts; !rest.empty();) {
            const auto crossing =
                search.next(rest.size(), [&](std::size_t sample) { return static_cast<double>(rest[sample]); });
            if (!crossing) return;
            crossings.push_back(search.seen() - 1);
            rest = rest.subspan(*crossing + 1);
        }
    });
    return crossings;
}

std::string summary(const std::vector<std::int64_t>& crossings, double rateHz) {
    if (crossings.empty()) return "never fires";
    const std::string first = plainNumber(static_cast<double>(crossings.front()) / rateHz) + " s";
    if (crossings.size() == 1) return "fires once, at " + first;
    return "fires " + std::to_string(crossings.size()) + " times, first at " + first;
}

} // namespace

Result<void> findCrossings(const TriggerRequest& request, std::ostream& out, std::ostream& err) {
    const Result<TrialPtr> read = readTrialFile(request.file, err);
    if (!read) return read.error();
    const Trial& trial = *read.value();
    const int channels = trial.samples->channels();
    if (request.channel < 0 || request.channel >= channels)
        return Error{ErrorKind::InvalidValue, "There is no channel " + std::to_string(request.channel) +
                                                  ". The trial has " + std::to_string(channels) + ", counted from 0."};
    if (trial.sampling.Rate <= 0)
        return Error{ErrorKind::InvalidValue,
                     "The trial has no sampling rate, so its crossings have no times. Choose another file."};

    const double rateHz = trial.sampling.Rate;
    const std::vector<std::int64_t> crossings = crossingsOf(*trial.samples, triggerOf(request, trial));
    if (request.json) {
        nlohmann::ordered_json list = nlohmann::ordered_json::array();
        for (const std::int64_t sample : crossings)
            list.push_back({{"Sample", sample}, {"Seconds", static_cast<double>(sample) / rateHz}});
        const nlohmann::ordered_json json{{"Channel", request.channel},
                                          {"Level", shortestDouble(request.levelVolts)},
                                          {"Falling", request.falling},
                                          {"Pretrigger", request.preTriggerPercent},
                                          {"Crossings", list}};
        out << json.dump(2) << '\n';
        return {};
    }
    out << summary(crossings, rateHz) << '\n';
    for (const std::int64_t sample : crossings)
        out << sample << '\t' << plainNumber(static_cast<double>(sample) / rateHz) << '\n';
    return {};
}

} // namespace tavex2
