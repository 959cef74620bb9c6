#pragma once

#include "platform/CWAI.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace tavex2 {

/// A start trigger with hysteresis. For a rising slope it arms at a sample at or below level - band (a band of 0: below
/// the level) and fires at the first later sample at or above the level; a falling slope is the mirror image.
struct LevelTrigger {
    int column = 0; ///< position of the source in the channel list
    double levelVolts = 0;
    double bandVolts = 0;
    bool rising = true;
    std::int64_t preTriggerScans = 0; ///< scans kept from before the crossing, fewer than a block has
};

/// The trigger that a start condition asks for, on the channel in that column.
LevelTrigger levelTriggerFor(const StartCondition& start, int column);

/// Looks for the crossings of a trigger in the samples of its channel, which come piece by piece. The search, arming
/// included, starts at the sample whose number equals preTriggerScans, so that enough scans have passed; after a
/// crossing it arms anew. Used by ScanAssembler on the acquisition thread, which starts a trial at the first crossing,
/// and by whoever wants to know where a trial would have started.
class TriggerSearch {
  public:
    explicit TriggerSearch(const LevelTrigger& trigger);

    /// Looks at the next `count` samples; `voltsAt(i)` gives the i-th of them. Gives the place of the first crossing
    /// among them, behind which the search goes on, or none when all were looked at.
    template <class VoltsAt>
    std::optional<std::size_t> next(std::size_t count, VoltsAt&& voltsAt) {
        auto sample =
            static_cast<std::size_t>(std::clamp<std::int64_t>(m_first - m_seen, 0, static_cast<std::int64_t>(count)));
        for (; sample < count; ++sample) {
            const double volts = m_sign * voltsAt(sample);
            if (!m_armed) {
                m_armed = m_band > 0 ? volts <= m_level - m_band : volts < m_level;
            } else if (volts >= m_level) {
                m_armed = false;
                m_seen += static_cast<std::int64_t>(sample) + 1;
                return sample;
            }
        }
        m_seen += static_cast<std::int64_t>(count);
        return std::nullopt;
    }

    /// Samples looked at so far, up to the last crossing and with it if the last call found one.
    std::int64_t seen() const { return m_seen; }

  private:
    // A falling slope is searched for as a rising one of the mirrored signal.
    double m_sign;
    double m_level;
    double m_band;
    std::int64_t m_first; ///< number of the first sample that counts
    std::int64_t m_seen = 0;
    bool m_armed = false;
};

} // namespace tavex2
