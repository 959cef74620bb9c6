#include "display/TrialPyramid.h"

#include <atomic>
#include <system_error>
#include <thread>

namespace tavex2 {

namespace {

/// Below this many samples starting a thread costs more than it saves.
constexpr std::int64_t worthThreads = 1'000'000;

/// Calls `work(i)` for 0 <= i < count, on as many threads as the machine has; the calling thread takes part.
template <class Work>
void spread(int count, const Work& work) {
    std::atomic<int> next = 0;
    const auto takeWork = [&] {
        for (int i = next++; i < count; i = next++)
            work(i);
    };
    std::vector<std::jthread> helpers;
    const int cores = static_cast<int>(std::thread::hardware_concurrency());
    try {
        while (static_cast<int>(helpers.size()) + 1 < std::min(cores, count))
            helpers.emplace_back(takeWork);
    } catch (const std::system_error&) {
        // The system gives no further thread: those that run, this one at least, do all of it.
    }
    takeWork();
}

} // namespace

TrialPyramid::TrialPyramid(std::shared_ptr<const TrialArray> trial) : m_trial(std::move(trial)) {
    if (!m_trial || m_trial->empty()) return;
    m_channels.resize(static_cast<std::size_t>(m_trial->channels()));
    const auto build = [this](int channel) {
        m_channels[static_cast<std::size_t>(channel)] =
            m_trial->visitChannel(channel, [](auto samples) { return TracePyramid(samples); });
    };
    if (m_trial->samples() >= worthThreads / m_trial->channels())
        spread(channels(), build);
    else
        for (int channel = 0; channel < channels(); ++channel)
            build(channel);
    for (const TracePyramid& channel : m_channels) {
        m_whole.add(channel.whole());
        m_finite.add(channel.finite());
    }
}

} // namespace tavex2
