#pragma once

#include "acquisition/records/ProgramState.h"
#include "base/Result.h"

namespace tavex2 {

/// Adds a trial to the set. The first one of a set decides what later ones must agree with (SettingsCompatible). Error
/// InvalidValue, with the text to show, when the set is full or the trial does not agree; the set is unchanged then.
Result<void> AddOverlay(OverlaySet& overlays, const TrialPtr& trial);

/// Empties the set; what its slots hold is overwritten as new overlays arrive.
void ClearOverlays(OverlaySet& overlays);

/// One channel of all overlays, [overlay][sample], or of their average, [sample]; `rectify` makes every value its
/// absolute value, after averaging. Averages are float64, rectified or not; else the element type is that of the
/// overlays (float64 where they differ). Errors: InvalidValue for an empty set, a channel that is not there, and
/// overlays of different shapes; OutOfMemory.
Result<TrialData> BuildPlotData(const OverlaySet& overlays, int channel, bool average, bool rectify);

} // namespace tavex2
