#include "platform/LatestWindow.h"

#include <algorithm>
#include <utility>

namespace tavex2 {

namespace {

Result<TrialArray> allocate(int channels, std::int64_t scans) {
    return TrialArray::allocate(ElementType::Float64, channels == 1 ? 1 : 2, channels, scans);
}

} // namespace

LatestWindow::LatestWindow(TrialArray ring, const VoltageLimits& limits) : m_ring(std::move(ring)), m_limits(limits) {}

Result<LatestWindow> LatestWindow::create(int channels, std::int64_t scans, const VoltageLimits& limits) {
    Result<TrialArray> ring = allocate(channels, scans);
    if (!ring) return ring.error();
    return LatestWindow(std::move(ring).value(), limits);
}

void LatestWindow::add(std::span<const double> interleaved) {
    const auto channels = static_cast<std::size_t>(m_ring.channels());
    while (!interleaved.empty()) {
        const std::size_t scans =
            std::min(interleaved.size() / channels, static_cast<std::size_t>(m_ring.samples() - m_next));
        storeScans(interleaved.first(scans * channels), m_limits, m_ring, m_next);
        interleaved = interleaved.subspan(scans * channels);
        m_next = (m_next + static_cast<std::int64_t>(scans)) % m_ring.samples();
        m_seen += static_cast<std::int64_t>(scans);
        m_kept = std::min(m_kept + static_cast<std::int64_t>(scans), m_ring.samples());
    }
}

Result<TrialArray> LatestWindow::latest() const {
    Result<TrialArray> copy = allocate(m_ring.channels(), m_kept);
    if (!copy) return copy;
    const auto oldest = static_cast<std::size_t>(m_kept < m_ring.samples() ? 0 : m_next);
    for (int channel = 0; channel < m_ring.channels(); ++channel) {
        const std::span<const double> kept = m_ring.doubles(channel).first(static_cast<std::size_t>(m_kept));
        std::ranges::rotate_copy(kept, kept.begin() + static_cast<std::ptrdiff_t>(oldest),
                                 copy.value().doubles(channel).begin());
    }
    return copy;
}

} // namespace tavex2
