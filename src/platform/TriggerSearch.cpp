#include "platform/TriggerSearch.h"

#include <cmath>

namespace tavex2 {

LevelTrigger levelTriggerFor(const StartCondition& start, int column) {
    return {.column = column,
            .levelVolts = start.levelVolts,
            .bandVolts = std::abs(start.levelVolts - start.secondThresholdVolts),
            .rising = start.rising,
            .preTriggerScans = start.preTriggerScans};
}

TriggerSearch::TriggerSearch(const LevelTrigger& trigger)
    : m_sign(trigger.rising ? 1.0 : -1.0), m_level(m_sign * trigger.levelVolts), m_band(trigger.bandVolts),
      m_first(trigger.preTriggerScans) {}

} // namespace tavex2
