#pragma once

#include "acquisition/records/TrialBuffers.h"
#include "platform/CWAI.h"

#include <optional>
#include <string>

namespace tavex2 {

/// What a run shows. The main window fulfils it, and the command line in its own way. User-interface thread only.
class RunView {
  public:
    virtual ~RunView() = default;

    virtual void setStatusText(const std::string& text) = 0; ///< first status-bar panel
    virtual void setBusyPointer(bool busy) = 0;              ///< hourglass or normal pointer
    virtual void setStopEnabled(bool enabled) = 0;           ///< tool bar button "Stop"
    virtual void setWaitingShown(bool shown) = 0;            ///< the waiting window
    /// How far the trial is; no value when none is being taken.
    virtual void showProgress(const std::optional<AnalogProgress>& progress) = 0;

    /// The real-time view: the current trial's graph is cleared for a window of so many seconds, shows each block from
    /// 0 on in place of the one before, and is left as it is at the end.
    virtual void beginRealTime(double windowSeconds) = 0;
    virtual void showRealTime(const TrialData& block, double sampleIntervalSeconds) = 0;
    virtual void endRealTime() = 0;

    virtual void RedrawTrials() = 0;
    virtual void UpdateMenus() = 0;
    virtual void UpdateCaption() = 0;

    /// Lets the user enter comments for the trial that has just arrived; returns when done.
    virtual void editComments() = 0;
};

/// Takes finished trials that are to be saved without being asked for each.
class TrialSink {
  public:
    virtual ~TrialSink() = default;

    /// Saves the current trial. `saveType` 1 asks for a tab-delimited file, anything else for a binary trial file.
    virtual void autosave(int saveType) = 0;
};

} // namespace tavex2
