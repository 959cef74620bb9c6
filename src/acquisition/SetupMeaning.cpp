#include "acquisition/SetupMeaning.h"

#include "acquisition/AcqFields.h"
#include "acquisition/StartCondition.h"
#include "acquisition/StimulusPulses.h"
#include "base/Decimal.h"
#include "base/NumberFormat.h"
#include "platform/ChannelList.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace tavex2 {

namespace {

/// The number of listed channels, whatever the board has; no value when the list cannot be read.
std::optional<int> channelsOf(const SamplingSettings& sampling) {
    const auto channels = parseChannelList(sampling.Channels.trimmed(), std::numeric_limits<int>::max());
    if (!channels) return std::nullopt;
    return static_cast<int>(channels.value().size());
}

std::string counted(std::uint64_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

/// "6 s", "12 min 30 s", "5 h 20 min".
std::string timeText(double seconds) {
    constexpr double perMinute = 60;
    constexpr double perHour = 3600;
    if (seconds < 2 * perMinute) return formatNumber(seconds, "0.### \"s\"");
    const bool hours = seconds >= 2 * perHour;
    const auto units = static_cast<std::int64_t>(std::round(hours ? seconds / perMinute : seconds));
    return std::to_string(units / 60) + (hours ? " h " : " min ") + std::to_string(units % 60) +
           (hours ? " min" : " s");
}

/// What the trial and its file come to; empty when the channels cannot be counted. Notes a disk that is too full.
std::string sizeSentence(const AcqSettings& settings, const TrialStorage& storage,
                         const std::filesystem::path& dataFolder, std::string& warnings) {
    const std::int64_t samples = samplesPerTrial(settings.sampling);
    const std::optional<int> channels = channelsOf(settings.sampling);
    if (!channels || samples <= 0) return {};
    const double memory = static_cast<double>(samples) * *channels * static_cast<double>(sizeof(double));
    std::string text = counted(static_cast<std::uint64_t>(samples), "sample") + " of " +
                       counted(static_cast<std::uint64_t>(*channels), "channel") + " a trial: " + sizeText(memory) +
                       " in memory";
    const auto file = storage.fileBytes(*channels, samples);
    const auto available = storage.freeBytes(dataFolder);
    if (file) text += ", " + sizeText(static_cast<double>(*file)) + " in a file";
    if (file && available) {
        const std::uint64_t room = *available / *file;
        text += "; the data folder has room for " + counted(room, "trial");
        if (settings.sampling.Repeat > 0 && room < static_cast<std::uint64_t>(settings.sampling.Repeat))
            warnings += " Folder: the disk is too full for what one start collects.";
    }
    return text + ".";
}

/// How many trials one start collects, how long that takes, and which of them waits for the trigger.
std::string runSentences(const AcqSettings& settings, bool triggered) {
    const SamplingSettings& sampling = settings.sampling;
    const auto repeats = static_cast<std::uint64_t>(sampling.Repeat);
    const double seconds = static_cast<double>(sampling.Duration) * sampling.Repeat + settings.setup.StartDelay;
    std::string text = " One start collects " + counted(repeats, "trial") + " in " + timeText(seconds);
    if (settings.setup.StartDelay > 0) text += ", the delay included";
    text += triggered ? ", and waits for the trigger." : ".";
    if (!triggered) return text;
    const double milliseconds =
        1000.0 * static_cast<double>(preTriggerScans(sampling, settings.trigger)) / sampling.Rate;
    text += std::string(repeats > 1 ? " The first begins " : " It begins ") +
            formatNumber(milliseconds, "0.### \"ms\"") + " before the trigger";
    return text + (repeats > 1 ? "; the others follow without one." : ".");
}

/// The pulses are timed by the program alone, up to the last one of the last trial.
std::string pulseSentence(const SamplingSettings& sampling) {
    constexpr double noticedSeconds = 0.1;
    int longestMs = -1;
    for (unsigned line = 0; line < pulsedLines; ++line)
        if (((sampling.DIOMask >> line) & 1) != 0)
            longestMs = std::max<int>(longestMs, sampling.DIOLatency[static_cast<std::size_t>(line)]);
    if (longestMs < 0) return {};
    const double seconds = static_cast<double>(sampling.Duration) * (sampling.Repeat - 1) + longestMs / 1000.0;
    if (seconds < noticedSeconds) return {};
    return " The window stands still for " + timeText(seconds) + " while the pulses are given.";
}

} // namespace

std::string sizeText(double bytes) {
    constexpr std::array<const char*, 4> units{"kB", "MB", "GB", "TB"};
    if (bytes < 1000) return fixedDecimal(bytes, 0) + " bytes";
    std::size_t unit = 0;
    for (bytes /= 1000; bytes >= 999.95 && unit + 1 < units.size(); ++unit)
        bytes /= 1000;
    return fixedDecimal(bytes, 1) + " " + units[unit];
}

SetupMeaning meaningOf(const AcqSettings& settings, bool triggered, const CWAI& analogInput,
                       const TrialStorage& storage, const std::filesystem::path& dataFolder) {
    SetupMeaning meaning;
    const StartCondition start = startConditionFor(settings, triggered);
    const std::optional<FieldProblem> problem = collectionProblem(settings, triggered);
    meaning.summary = sizeSentence(settings, storage, dataFolder, meaning.warnings);
    if (!meaning.summary.empty() && !problem)
        meaning.summary += runSentences(settings, triggered) + pulseSentence(settings.sampling);

    if (problem)
        meaning.warnings += " " + boxOf(problem->field) + " " + problem->text;
    else if (const std::string refusal = analogInput.refusalOf(configurationFor(settings, start)); !refusal.empty())
        meaning.warnings += " " + refusal;
    if (const std::string item = possiblyCutItem(settings.sampling.Channels); !item.empty() && !problem)
        meaning.warnings += " Channels: the list fills its 50 characters and may have been cut in \"" + item + "\".";
    const bool reachable = start.levelVolts < static_cast<double>(settings.sampling.UpperVolts) &&
                           start.levelVolts > static_cast<double>(settings.sampling.LowerVolts);
    if (triggered && !reachable) meaning.warnings += " Level: the trigger lies outside the voltage limits.";
    if (!meaning.warnings.empty()) meaning.warnings.erase(0, 1);
    return meaning;
}

} // namespace tavex2
