#include "acquisition/records/LmbHeader.h"

#include "base/Decimal.h"

namespace tavex2 {

std::string labelOf(const LmbHeader& header, int channel) {
    const auto& label = header.Labels[static_cast<std::size_t>(channel) + 1];
    return label.neverSet() ? "Channel " + zeroPadded(channel, 2) : label.text();
}

std::string channelUnitOf(const LmbHeader& header, int channel) {
    const auto& unit = header.Units[static_cast<std::size_t>(channel) + 1];
    return unit.neverSet() ? "V" : unit.trimmed();
}

} // namespace tavex2
