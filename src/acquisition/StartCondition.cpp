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

void describeSampling(AcqSettings& settings, CWAI& analogInput) {
    SamplingSettings& sampling = settings.sampling;
    const std::string channels = sampling.Channels.trimmed();
    sampling.Channels.assign(channels);
    const std::int64_t trialScans = samplesPerTrial(sampling);

    analogInput.selectDevice(settings.setup.Device);
    AnalogInputConfig& config = analogInput.config;
    config.channelList = channels;
    config.scanRateHz = sampling.Rate;
    config.totalScans = sampling.Repeat * trialScans;
    config.upperVolts = static_cast<double>(sampling.UpperVolts);
    config.lowerVolts = static_cast<double>(sampling.LowerVolts);
    config.chunked = sampling.Repeat >= 2;
    config.chunkScans = trialScans;
    config.end = EndCondition::AfterTotalScans;
}

} // namespace tavex2
