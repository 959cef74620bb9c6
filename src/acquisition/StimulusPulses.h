#pragma once

#include "acquisition/records/Trial.h"
#include "platform/CWDIO.h"
#include "platform/MillisecondClock.h"

#include <vector>

namespace tavex2 {

/// The digital output lines that can give stimulus pulses: the first three.
inline constexpr unsigned pulsedLines = 3;

/// Whether these settings give any pulse.
inline bool givesPulses(const SamplingSettings& sampling) {
    return (sampling.DIOMask & ((1U << pulsedLines) - 1U)) != 0;
}

/// Gives the stimulus pulses of a collection that has just started, and returns when the last repeat's are over: each
/// enabled line gives one pulse of about a millisecond at its latency after the start of each repeat, repeats counted
/// from now on by the trial's duration. Lines due in the same millisecond pulse together, and the port is 0 at the end.
/// `output` is null where no board is driven; time passes all the same. Gives the pulses of each repeat.
/// User-interface thread, which it blocks.
std::vector<std::vector<GivenPulse>> RunStimulusPulses(const SamplingSettings& sampling, MillisecondClock& clock,
                                                       CWDIO* output);

} // namespace tavex2
