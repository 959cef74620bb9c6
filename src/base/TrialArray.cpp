#include "base/TrialArray.h"

#include <cassert>
#include <cstring>
#include <limits>
#include <string>

namespace tavex2 {

Result<TrialArray> TrialArray::allocate(ElementType type, int rank, int channels, std::int64_t samples) {
    if (channels < 1 || samples < 1 || (rank != 1 && rank != 2) || (rank == 1 && channels != 1))
        return Error{ErrorKind::InvalidValue, "A trial needs at least one channel and one sample."};

    TrialArray array;
    array.m_type = type;
    array.m_rank = rank;
    array.m_channels = channels;
    array.m_samples = samples;

    const auto bytesPerSample = array.elementSize() * static_cast<std::size_t>(channels);
    const auto limit = static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max());
    const Error tooLarge{ErrorKind::OutOfMemory, "A trial of " + std::to_string(channels) + " channels x " +
                                                     std::to_string(samples) +
                                                     " samples does not fit into this machine's memory; choose a "
                                                     "shorter duration, a lower rate or fewer channels."};
    if (static_cast<std::size_t>(samples) > limit / bytesPerSample) return tooLarge;
    // Left uninitialised on purpose: every sample is written before it is read, and touching the pages twice would
    // double the cost of a long trial.
    array.m_data = allocateSampleMemory(bytesPerSample * static_cast<std::size_t>(samples));
    if (!array.m_data) return tooLarge;
    return array;
}

std::span<float> TrialArray::floats(int channel) {
    return row<float>(channel);
}
std::span<const float> TrialArray::floats(int channel) const {
    return row<const float>(channel);
}
std::span<double> TrialArray::doubles(int channel) {
    return row<double>(channel);
}
std::span<const double> TrialArray::doubles(int channel) const {
    return row<const double>(channel);
}

double TrialArray::at(int channel, std::int64_t sample) const {
    return visitChannel(channel,
                        [sample](auto samples) -> double { return samples[static_cast<std::size_t>(sample)]; });
}

void TrialArray::truncate(std::int64_t samples) {
    assert(samples >= 0 && samples <= m_samples);
    const auto size = static_cast<std::ptrdiff_t>(elementSize());
    for (int channel = 1; channel < m_channels; ++channel)
        std::memmove(m_data.get() + size * channel * samples, m_data.get() + size * channel * m_samples,
                     static_cast<std::size_t>(size * samples));
    m_samples = samples;
}

} // namespace tavex2
