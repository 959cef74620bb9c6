#include "acquisition/StimulusPulses.h"

#include "base/Rounding.h"

#include <algorithm>

namespace tavex2 {

std::vector<std::vector<GivenPulse>> RunStimulusPulses(const SamplingSettings& sampling, MillisecondClock& clock,
                                                       CWDIO* output) {
    std::vector<std::vector<GivenPulse>> given;
    if (!givesPulses(sampling)) return given;
    std::int64_t start = clock.milliseconds();
    constexpr double longestMs = 3600e3; // of a trial; where no board is driven none has refused a wilder duration
    const double durationMs = static_cast<double>(sampling.Duration) * 1000.0;
    const std::int64_t trialMs = durationMs <= longestMs ? roundHalfEven(std::max(durationMs, 0.0)) : 0;
    for (int repeat = 0; repeat < sampling.Repeat; ++repeat) {
        std::vector<GivenPulse>& pulses = given.emplace_back();
        unsigned pending = sampling.DIOMask & ((1U << pulsedLines) - 1U);
        unsigned lines = 0;
        while (pending != 0 || lines != 0) {
            const std::int64_t elapsed = clock.milliseconds() - start;
            lines = 0;
            for (unsigned line = 0; line < pulsedLines; ++line) {
                const unsigned bit = 1U << line;
                if ((pending & bit) == 0 || elapsed < sampling.DIOLatency[line]) continue;
                lines |= bit;
                pending &= ~bit;
                pulses.push_back({static_cast<int>(line), static_cast<double>(elapsed)});
            }
            if (output != nullptr) output->write(static_cast<std::uint8_t>(lines));
            clock.waitForNextMillisecond();
        }
        start += trialMs;
    }
    return given;
}

} // namespace tavex2
