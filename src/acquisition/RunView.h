#pragma once

#include "acquisition/records/ProgramState.h"

#include <string>

namespace tavex2 {

/// What a run shows. The main window fulfils it, and the command line in its own way. User-interface thread only.
class RunView {
  public:
    virtual ~RunView() = default;

    /// The state has changed: everything that follows from it is to be shown anew. Trials on the graphs have not.
    virtual void refresh() = 0;
    /// What was shown is to be on the screen now: the window will stand still for a while.
    virtual void paintNow() = 0;
    /// The trials have changed: the graphs are to show them.
    virtual void RedrawTrials() = 0;

    /// The real-time view: the current trial's graph is cleared for a window of so many seconds, shows each block from
    /// 0 on in place of the one before, and is left as it is at the end.
    virtual void beginRealTime(double windowSeconds) = 0;
    virtual void showRealTime(const TrialData& block, double sampleIntervalSeconds) = 0;
    virtual void endRealTime() = 0;

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
