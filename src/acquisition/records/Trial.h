#pragma once

#include "acquisition/records/AcqSettings.h"
#include "acquisition/records/LmbHeader.h"
#include "base/TrialArray.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavex2 {

/// The samples of a trial, in volts: never changed once they have arrived, so everyone shares them.
using TrialData = std::shared_ptr<const TrialArray>;

/// A stimulus pulse that was given.
struct GivenPulse {
    int line = 0;            ///< digital output line
    double milliseconds = 0; ///< after the repeat's first scan was due

    friend bool operator==(const GivenPulse&, const GivenPulse&) = default;
};

/// When, where and how a trial was taken. Voltage limits, rate and duration are among its sampling settings.
struct TrialRecord {
    std::string start;  ///< of its first sample, ISO 8601 with milliseconds and time zone; empty when not known
    std::string source; ///< name of the board, or path of the file that it was read from
    std::optional<std::int64_t> triggerSample; ///< the sample at which the trigger fired
    std::optional<TriggerSettings> trigger;    ///< what it waited for; none for an immediate start
    std::vector<GivenPulse> pulses;            ///< in the order in which they were given
};

/// One trial with everything that belongs to it. It never changes: whoever shows, measures, saves, exports or averages
/// a trial keeps a TrialPtr and has all of it, whatever arrives meanwhile. Saving it, naming its channels or commenting
/// it makes a new one over the same samples.
struct Trial {
    TrialData samples;         ///< none after a collection that drove no board
    std::string name;          ///< stem of every file name, and the caption
    std::int16_t number = 0;   ///< the trial number, for titles and comments
    SamplingSettings sampling; ///< how it was taken; NumChannels and NumSamples are those of `samples`
    LmbHeader header;          ///< Labels and Units of its channels, and what its file had in other slots
    LmbInfoA infoA{};
    LmbInfoB infoB{};
    TrialComments comments{};
    TrialRecord record;
    std::string savedName;       ///< file name under which it was last saved or from which it was opened
    std::string file;            ///< that file's path; empty for a trial that lies in memory alone
    bool Unsaved = true;         ///< not yet in a trial file; drives the caption's suffix
    bool TrialNotSaved = true;   ///< not yet in any file; drives the question at exit
    bool AddedToAverage = false; ///< it is part of the average, or was when that was cleared
    bool AddedToOverlays = false;
    bool imported = false; ///< it comes from the stimulus program and has not been saved here

    bool hasSamples() const { return samples && !samples->empty(); }
};

using TrialPtr = std::shared_ptr<const Trial>;

/// A trial over the same samples with what `change(Trial&)` makes of the rest.
template <class Change>
TrialPtr changed(const TrialPtr& trial, Change&& change) {
    auto next = std::make_shared<Trial>(*trial);
    change(*next);
    return next;
}

} // namespace tavex2
