#include "analysis/ChannelLabels.h"

#include "base/Decimal.h"

#include <algorithm>
#include <numeric>

namespace tavex2 {

namespace {

std::string withoutTrailingBlanks(const std::string& text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

int channelsOf(const ProgramState& state) {
    const int configured = state.settings.sampling.NumChannels;
    return std::clamp(configured != 0 ? configured : int{state.header.NumChannels}, 0, mostChannels);
}

} // namespace

ChannelLabels::ChannelLabels(ProgramState& state)
    : m_header(state.header), m_channels(channelsOf(state)), m_atLoad(state.header) {
    fillEmptySlots();
}

std::string ChannelLabels::rate() const {
    return fixedDecimal(m_header.Rate, 3);
}

std::string ChannelLabels::duration() const {
    return fixedDecimal(m_header.Duration, 4);
}

void ChannelLabels::fillEmptySlots() {
    for (int channel = 0; channel < m_channels; ++channel) {
        auto& label = m_header.Labels[slot(channel)];
        auto& unit = m_header.Units[slot(channel)];
        if (label.neverSet()) label.assign(labelOf(m_header, channel));
        if (unit.neverSet()) unit.assign(channelUnitOf(m_header, channel));
    }
}

void ChannelLabels::enterLabel(int channel, const std::string& answer) {
    // Blanks alone are an answer and store a blank label.
    if (!answer.empty()) m_header.Labels[slot(channel)].assign(withoutTrailingBlanks(answer));
}

void ChannelLabels::enterUnit(int channel, const std::string& answer) {
    m_lastUnit = answer;
    if (!answer.empty()) m_header.Units[slot(channel)].assign(withoutTrailingBlanks(answer));
}

std::vector<int> ChannelLabels::previewed() const {
    std::vector<int> checked;
    for (int channel = 0; channel < std::min(m_channels, boxes); ++channel)
        if (m_chosen[static_cast<std::size_t>(channel)]) checked.push_back(channel);
    if (!checked.empty()) return checked;
    std::vector<int> all(static_cast<std::size_t>(m_channels));
    std::iota(all.begin(), all.end(), 0);
    return all;
}

void ChannelLabels::cmdSelect_Click() {
    if (m_lastUnit.empty()) return;
    for (int channel = 0; channel < m_channels; ++channel)
        m_header.Units[slot(channel)].assign(m_lastUnit);
}

void ChannelLabels::cmdCancel_Click() {
    for (int channel = 0; channel < m_channels; ++channel) {
        m_header.Labels[slot(channel)] = m_atLoad.Labels[slot(channel)];
        m_header.Units[slot(channel)] = m_atLoad.Units[slot(channel)];
    }
}

} // namespace tavex2
