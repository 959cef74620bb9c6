#include "platform/devices/Recording.h"

#include <algorithm>
#include <utility>

namespace tavex2 {

Recording::Recording(std::unique_ptr<RecordedSignal> signal, std::string spec, MillisecondClock& clock)
    : m_signal(std::move(signal)), m_pacing(clock) {
    m_description.name = "Recording " + m_signal->name();
    m_description.spec = std::move(spec);
    m_description.inputs = m_signal->channels();
    m_description.lowestRateHz = m_signal->rateHz();
    m_description.highestRateHz = m_signal->rateHz();
}

DaqOutcome Recording::check(const StreamConfig&) const {
    return {};
}

DaqOutcome Recording::start(const StreamConfig& config) {
    m_channels = config.channels;
    m_nextScan = 0;
    m_pacing.begin(config.rateHz);
    return {};
}

BoardRead Recording::read(std::span<double> interleaved) {
    const std::size_t channels = m_channels.size();
    const auto inputs = static_cast<std::size_t>(m_signal->channels());
    const auto asked = static_cast<std::int64_t>(interleaved.size() / channels);
    if (!m_pacing.waitForScan(m_nextScan + asked - 1)) return {};

    std::int64_t done = 0;
    while (done < asked) {
        const std::int64_t first = (m_nextScan + done) % m_signal->scans();
        const std::int64_t scans = std::min(asked - done, m_signal->scans() - first);
        m_piece.resize(static_cast<std::size_t>(scans) * inputs);
        if (const Result<void> read = m_signal->read(first, m_piece); !read) {
            m_nextScan += done;
            return {.scans = done, .status = DaqStatus::DeviceVanished, .context = read.error().text};
        }
        for (std::size_t scan = 0; scan < static_cast<std::size_t>(scans); ++scan)
            for (std::size_t column = 0; column < channels; ++column)
                interleaved[(static_cast<std::size_t>(done) + scan) * channels + column] =
                    m_piece[scan * inputs + static_cast<std::size_t>(m_channels[column])];
        done += scans;
    }
    m_nextScan += done;
    return {.scans = done, .status = DaqStatus::Ok, .context = {}};
}

} // namespace tavex2
