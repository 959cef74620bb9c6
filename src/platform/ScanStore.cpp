#include "platform/ScanStore.h"

#include <algorithm>

namespace tavex2 {

void storeScans(std::span<const double> interleaved, const VoltageLimits& limits, TrialArray& target,
                std::int64_t first) {
    const auto channels = static_cast<std::size_t>(target.channels());
    const std::size_t scans = interleaved.size() / channels;
    // A few scans of all channels at a time, so that what the inner loop skips is still in the cache for the next
    // channel.
    constexpr std::size_t tile = 64;
    for (std::size_t start = 0; start < scans; start += tile) {
        const std::size_t count = std::min(tile, scans - start);
        for (std::size_t channel = 0; channel < channels; ++channel) {
            double* out = target.doubles(static_cast<int>(channel)).data() + first + static_cast<std::int64_t>(start);
            const double* in = interleaved.data() + start * channels + channel;
            for (std::size_t i = 0; i < count; ++i)
                out[i] = limits.apply(in[i * channels]);
        }
    }
}

} // namespace tavex2
