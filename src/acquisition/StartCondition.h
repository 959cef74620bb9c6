#pragma once

#include "acquisition/records/AcqSettings.h"
#include "platform/CWAI.h"

namespace tavex2 {

/// The start condition that confirmed settings ask for: none for an immediate start; else the trigger level on the
/// trigger channel with a second threshold at 0.9 of the level, the slope and the scans kept before the trigger.
/// Nothing else sets a collection's start condition, so changing TriggerMode alone starts no triggering.
StartCondition startConditionFor(const AcqSettings& settings, bool triggerEnabled);

/// How settings ask the analog-input control to sample: channel list (trimmed), rate, limits, total scans and, for two
/// and more repeats, delivery in chunks of one trial.
AnalogInputConfig configurationFor(const AcqSettings& settings, const StartCondition& start);

/// Tells the analog-input control how to sample: device, channel list (trimmed, and written back trimmed), rate,
/// limits, total scans and, for two and more repeats, delivery in chunks of one trial. The start condition is left
/// alone.
void describeSampling(AcqSettings& settings, CWAI& analogInput);

} // namespace tavex2
