#include "acquisition/StartCondition.h"

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
    return {.channelList = sampling.Channels.trimmed(),
            .scanRateHz = static_cast<double>(sampling.Rate),
            .totalScans = sampling.Repeat * trialScans,
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
