#include "app/cli/MeasureCommand.h"

#include "analysis/ChannelMeasures.h"
#include "analysis/ReadingsText.h"
#include "app/cli/TrialFile.h"
#include "base/PathText.h"
#include "display/CursorPlace.h"

#include <nlohmann/json.hpp>

#include <memory>

namespace tavex2 {

namespace {

struct Stretch {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

Result<Stretch> stretchOf(const MeasureRequest& request, double rateHz, std::int64_t samples) {
    const double end = static_cast<double>(samples - 1) / rateHz;
    const double from = request.from.value_or(0);
    const double to = request.to.value_or(end);
    if (!(from <= to)) return Error{ErrorKind::InvalidValue, "--from lies behind --to. Exchange them."};
    const Stretch stretch{sampleAtOrAfter(from, rateHz, samples), sampleAtOrBefore(to, rateHz, samples)};
    if (to < 0 || from > end || stretch.first > stretch.last)
        return Error{ErrorKind::InvalidValue, "There is no sample between --from and --to. The trial lasts from 0 to " +
                                                  std::to_string(end) + " s."};
    return stretch;
}

} // namespace

Result<void> measureFile(const MeasureRequest& request, std::ostream& out, std::ostream& err) {
    const Result<TrialPtr> read = readTrialFile(request.file, err);
    if (!read) return read.error();
    const TrialData& trial = read.value()->samples;
    const double rateHz = read.value()->sampling.Rate;
    if (request.channel < 0 || request.channel >= trial->channels())
        return Error{ErrorKind::InvalidValue, "There is no channel " + std::to_string(request.channel) +
                                                  ". The trial has " + std::to_string(trial->channels()) +
                                                  ", counted from 0."};
    if (!(rateHz > 0) || trial->samples() < 2)
        return Error{ErrorKind::InvalidValue, "The trial has no sampling rate or less than two samples."};
    const Result<Stretch> stretch = stretchOf(request, rateHz, trial->samples());
    if (!stretch) return stretch.error();

    const Result<TrialData> channel = ExtractChannel(trial, request.channel, request.rectify);
    if (!channel) return channel.error();
    const ChannelMeasures measures(std::make_shared<const TrialPyramid>(channel.value()), 0, rateHz);
    const auto [first, last] = stretch.value();
    const auto readings = MeasureBetweenCursors(measures, first, last);
    const double from = static_cast<double>(first) / rateHz;
    const double to = static_cast<double>(last) / rateHz;
    if (request.json) {
        const nlohmann::ordered_json json{{"Channel", request.channel},
                                          {"Minimum", readings->Minimum},
                                          {"Maximum", readings->Maximum},
                                          {"PeakToPeak", readings->peakToPeak()},
                                          {"Integral", readings->Integral},
                                          {"Interval", to - from},
                                          {"from", from},
                                          {"to", to}};
        out << json.dump(2) << '\n';
    } else {
        out << readingsTable(
            {readingsLine(read.value()->name, read.value()->header, request.channel, textsOf(from, to, readings))});
    }
    return {};
}

} // namespace tavex2
