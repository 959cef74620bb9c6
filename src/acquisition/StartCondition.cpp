#include "acquisition/StartCondition.h"

#include <limits>

namespace tavex2 {

StartCondition startConditionFor(const AcqSettings& settings, bool triggerEnabled) {
    StartCondition start;
    if (!triggerEnabled) return start;
    const auto level = static_cast<double>(settings.trigger.TriggerLevel);
    start.type = StartCondition::Type::AnalogLevel;
    start.levelVolts = level;
    start.secondThresholdVolts = 0.9 * level;
    start.channel = settings.trigger.TriggerChannel;
    start.preTriggerScans = preTriggerScans(settings.sampling, settings.trigger);
    start.rising = settings.trigger.TriggerRising;
    return start;
}

AnalogInputConfig configurationFor(const AcqSettings& settings, const StartCondition& start) {
    const SamplingSettings& sampling = settings.sampling;
    const std::int64_t trialScans = samplesPerTrial(sampling);
    // More than a trial can hold is refused by the board anyway, and could not be multiplied.
    constexpr std::int64_t mostScans = std::numeric_limits<std::int32_t>::max();
    return {.channelList = sampling.Channels.trimmed(),
            .scanRateHz = static_cast<double>(sampling.Rate),
            .totalScans = trialScans <= mostScans ? sampling.Repeat * trialScans : trialScans,
            .upperVolts = static_cast<double>(sampling.UpperVolts),
            .lowerVolts = static_cast<double>(sampling.LowerVolts),
            .chunked = sampling.Repeat >= 2,
            .chunkScans = trialScans,
            .start = start,
            .end = EndCondition::AfterTotalScans};
}

void describeSampling(AcqSettings& settings, CWAI& analogInput) {
    settings.sampling.Channels.assign(settings.sampling.Channels.trimmed());
    analogInput.selectDevice(settings.setup.Device);
    analogInput.config = configurationFor(settings, analogInput.config.start);
}

} // namespace tavex2
