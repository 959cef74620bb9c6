#pragma once

#include "base/Result.h"

#include <cstdint>
#include <filesystem>
#include <ostream>

namespace tavex2 {

/// What `tavex2 trigger` is asked for; level, slope and pre-trigger as the setup has them.
struct TriggerRequest {
    std::filesystem::path file;
    int channel = 0; ///< counted from 0
    float levelVolts = 0;
    bool falling = false;
    std::int16_t preTriggerPercent = 0; ///< of the trial's duration
    bool json = false;
};

/// Prints the crossings at which a triggered collection of the same signal would have started: the first one, and those
/// after it had the trigger been armed again at once. Errors: those of the readers, InvalidValue for a channel that is
/// not there and a trial without a sampling rate.
Result<void> findCrossings(const TriggerRequest& request, std::ostream& out, std::ostream& err);

} // namespace tavex2
