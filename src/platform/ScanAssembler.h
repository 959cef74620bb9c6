#pragma once

#include "platform/ScanStore.h"
#include "platform/TriggerSearch.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace tavex2 {

/// What the scans of one start are made into.
struct AssemblyConfig {
    int channels = 1;
    std::int64_t blockScans = 1;
    int blocks = 1;
    VoltageLimits limits{}; ///< applied to every sample, before the trigger looks at it
    std::optional<LevelTrigger> trigger = std::nullopt;
};

/// Makes trials out of a stream of scans: waits for the trigger, keeps the pre-trigger scans, limits the voltages and
/// cuts consecutive blocks. Pure logic without a thread of its own; the acquisition thread drives it.
///
/// TriggerSearch finds the crossing; its sample is sample number preTriggerScans of the first block.
class ScanAssembler {
  public:
    /// Takes a finished block (float64, rank 1 for one channel) and its 0-based number.
    using Deliver = std::function<void(TrialArray block, int index)>;

    /// Reserves the memory of the first blocks. Errors: InvalidValue for an impossible shape, OutOfMemory.
    static Result<ScanAssembler> create(const AssemblyConfig& config);

    /// Takes the next scans, channel after channel, and delivers every block that they complete. Scans after the last
    /// block are ignored. Error OutOfMemory when there is no room for a further block; what was complete is delivered.
    Result<void> add(std::span<const double> interleaved, const Deliver& deliver);

    bool waitingForTrigger() const { return m_waiting; }
    bool done() const { return m_index == m_config.blocks; }
    int blockIndex() const { return m_index; } ///< 0-based number of the block in progress
    std::int64_t scansInBlock() const { return m_waiting ? 0 : m_filled; }

    /// Number of the first scan of the block in progress, or of the one being delivered, since the stream began.
    std::int64_t firstScan() const { return m_first; }

    /// Scans that are still needed until everything is delivered; the largest number while the trigger is awaited.
    std::int64_t scansNeeded() const;

    /// The scans of the unfinished block, an array without samples when there are none. Ends the assembly.
    TrialArray takeUnfinished();

  private:
    explicit ScanAssembler(const AssemblyConfig& config);
    Result<TrialArray> allocate() const;
    Result<void> beginBlock();
    std::size_t scansBeforeCrossing(std::span<const double> interleaved);
    void keepHistory(std::span<const double> interleaved);
    void straightenHistory();

    AssemblyConfig m_config;
    TrialArray m_block; ///< being filled; its first preTriggerScans samples are the history ring until the block ends
    TrialArray m_next;  ///< reserved ahead, so that the change of blocks costs no time
    std::optional<TriggerSearch> m_search; ///< for the crossing; none for an immediate start
    bool m_waiting;
    std::int64_t m_oldest = 0; ///< where in the ring the oldest scan lies; the next one goes there
    std::int64_t m_filled = 0; ///< scans in m_block, the history included
    std::int64_t m_first = 0;  ///< number of the block's first scan
    int m_index = 0;
};

} // namespace tavex2
