#include "platform/ScanAssembler.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tavex2 {

ScanAssembler::ScanAssembler(const AssemblyConfig& config) : m_config(config), m_waiting(config.trigger.has_value()) {
    if (config.trigger) m_search.emplace(*config.trigger);
}

Result<ScanAssembler> ScanAssembler::create(const AssemblyConfig& config) {
    if (config.channels < 1 || config.blockScans < 1 || config.blocks < 1)
        return Error{ErrorKind::InvalidValue, "A collection needs at least one channel, one scan and one block."};
    if (config.trigger && (config.trigger->preTriggerScans < 0 || config.trigger->preTriggerScans >= config.blockScans))
        return Error{ErrorKind::InvalidValue, "The pre-trigger scans must be fewer than the scans of a trial."};

    ScanAssembler assembler(config);
    if (const Result<void> begun = assembler.beginBlock(); !begun) return begun.error();
    return assembler;
}

Result<TrialArray> ScanAssembler::allocate() const {
    return TrialArray::allocate(ElementType::Float64, m_config.channels == 1 ? 1 : 2, m_config.channels,
                                m_config.blockScans);
}

Result<void> ScanAssembler::beginBlock() {
    m_filled = 0;
    m_block = std::exchange(m_next, TrialArray{});
    if (m_block.empty()) {
        Result<TrialArray> block = allocate();
        if (!block) return block.error();
        m_block = std::move(block).value();
    }
    // No room ahead is no error yet: by the time the block is needed an earlier one may have been given back.
    if (m_index + 1 < m_config.blocks)
        if (Result<TrialArray> next = allocate(); next) m_next = std::move(next).value();
    return {};
}

Result<void> ScanAssembler::add(std::span<const double> interleaved, const Deliver& deliver) {
    const auto channels = static_cast<std::size_t>(m_config.channels);
    while (!interleaved.empty() && !done()) {
        std::size_t scans = interleaved.size() / channels;
        if (m_waiting) {
            scans = scansBeforeCrossing(interleaved);
            keepHistory(interleaved.first(scans * channels));
            if (!m_waiting) {
                m_filled = m_config.trigger->preTriggerScans;
                m_first = m_search->seen() - 1 - m_filled;
            }
        } else {
            scans = std::min(scans, static_cast<std::size_t>(m_config.blockScans - m_filled));
            storeScans(interleaved.first(scans * channels), m_config.limits, m_block, m_filled);
            m_filled += static_cast<std::int64_t>(scans);
        }
        interleaved = interleaved.subspan(scans * channels);

        if (!m_waiting && m_filled == m_config.blockScans) {
            straightenHistory();
            const int finished = m_index++;
            deliver(std::move(m_block), finished);
            m_first += m_config.blockScans;
            if (!done())
                if (const Result<void> begun = beginBlock(); !begun) return begun.error();
        }
    }
    return {};
}

std::int64_t ScanAssembler::scansNeeded() const {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    if (done()) return 0;
    const std::int64_t blocks = m_config.blocks - m_index;
    if (m_waiting || blocks > most / m_config.blockScans) return most;
    return blocks * m_config.blockScans - m_filled;
}

TrialArray ScanAssembler::takeUnfinished() {
    if (scansInBlock() == 0 || done()) return {};
    straightenHistory();
    m_block.truncate(m_filled);
    m_index = m_config.blocks;
    return std::move(m_block);
}

/// How many scans come before the crossing one; all of them, still waiting, when it is not among them.
std::size_t ScanAssembler::scansBeforeCrossing(std::span<const double> interleaved) {
    const auto channels = static_cast<std::size_t>(m_config.channels);
    const auto column = static_cast<std::size_t>(m_config.trigger->column);
    const std::size_t scans = interleaved.size() / channels;
    const std::optional<std::size_t> crossing = m_search->next(
        scans, [&](std::size_t scan) { return m_config.limits.apply(interleaved[scan * channels + column]); });
    m_waiting = !crossing;
    return crossing.value_or(scans);
}

/// Keeps the newest preTriggerScans scans in the ring at the front of the block.
void ScanAssembler::keepHistory(std::span<const double> interleaved) {
    const std::int64_t size = m_config.trigger->preTriggerScans;
    if (size == 0) return;
    const std::int64_t channels = m_config.channels;
    auto scans = static_cast<std::int64_t>(interleaved.size()) / channels;
    if (scans > size) { // the front of what arrived would be overwritten at once
        const std::int64_t skipped = scans - size;
        m_oldest = (m_oldest + skipped) % size;
        interleaved = interleaved.subspan(static_cast<std::size_t>(skipped * channels));
        scans = size;
    }
    const std::int64_t untilEnd = std::min(scans, size - m_oldest);
    const auto untilEndSamples = static_cast<std::size_t>(untilEnd * channels);
    storeScans(interleaved.first(untilEndSamples), m_config.limits, m_block, m_oldest);
    storeScans(interleaved.subspan(untilEndSamples), m_config.limits, m_block, 0);
    m_oldest = (m_oldest + scans) % size;
}

/// Turns the ring so that its oldest scan comes first. Done once, when the block leaves, so that nothing holds the
/// board up at the moment of the trigger.
void ScanAssembler::straightenHistory() {
    if (m_oldest == 0) return;
    for (int channel = 0; channel < m_config.channels; ++channel) {
        const std::span<double> ring =
            m_block.doubles(channel).first(static_cast<std::size_t>(m_config.trigger->preTriggerScans));
        std::rotate(ring.begin(), ring.begin() + m_oldest, ring.end());
    }
    m_oldest = 0;
}

} // namespace tavex2
