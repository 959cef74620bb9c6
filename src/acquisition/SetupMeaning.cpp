#include "acquisition/SetupMeaning.h"

#include "acquisition/AcqFields.h"
#include "acquisition/StartCondition.h"
#include "base/Decimal.h"
#include "platform/ChannelList.h"

#include <array>
#include <limits>

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

std::string sentence(const std::string& text) {
    return text.empty() ? text : " " + text;
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
                       const TrialStorage& storage) {
    SetupMeaning meaning;
    const std::int64_t samples = samplesPerTrial(settings.sampling);
    const std::optional<int> channels = channelsOf(settings.sampling);
    if (channels && samples > 0) {
        const double memory = static_cast<double>(samples) * *channels * static_cast<double>(sizeof(double));
        meaning.summary = counted(static_cast<std::uint64_t>(samples), "sample") + " of " +
                          counted(static_cast<std::uint64_t>(*channels), "channel") + " a trial: " + sizeText(memory) +
                          " in memory";
        const auto file = storage.fileBytes(*channels, samples);
        const auto available = storage.freeBytes();
        if (file) meaning.summary += ", " + sizeText(static_cast<double>(*file)) + " in a file";
        if (file && available) {
            const std::uint64_t room = *available / *file;
            meaning.summary += "; the data folder has room for " + counted(room, "trial");
            if (room < static_cast<std::uint64_t>(settings.sampling.Repeat))
                meaning.warnings += " The data folder is too full for what one start collects.";
        }
        meaning.summary += ".";
    }

    const StartCondition start = startConditionFor(settings, triggered);
    if (const Result<void> usable = checkCollectable(settings, triggered); !usable)
        meaning.warnings += sentence(usable.error().text);
    else
        meaning.warnings += sentence(analogInput.refusalOf(configurationFor(settings, start)));
    const bool reachable = start.levelVolts < static_cast<double>(settings.sampling.UpperVolts) &&
                           start.levelVolts > static_cast<double>(settings.sampling.LowerVolts);
    if (triggered && !reachable) meaning.warnings += " The trigger level lies outside the voltage limits.";
    if (!meaning.warnings.empty()) meaning.warnings.erase(0, 1);
    return meaning;
}

} // namespace tavex2
