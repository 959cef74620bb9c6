#pragma once

#include "acquisition/records/AcqSettings.h"
#include "acquisition/records/LmbHeader.h"
#include "acquisition/records/RunStatus.h"
#include "acquisition/records/TrialBuffers.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tavex2 {

/// What the user has switched on in the menus and not among the settings.
struct StateFlags {
    bool DebugMode = false;      ///< collections drive no A/D hardware
    bool TriggerEnabled = false; ///< triggering was chosen at the last confirmation of the setup
    bool LegendShown = false;
    bool legendClosed = false; ///< by its own close box, which leaves LegendShown as it was
    bool ShowLastTrial = true;
    bool ShowAveragedTrials = true;
    /// The setup's OK puts SaveOffsets on the mark of "Reset before collection starts" and PauseToReset on that of
    /// "Start Maximized"; the marks stay so until those items are chosen the next time.
    std::optional<bool> resetMark;
    std::optional<bool> maximizedMark;
};

/// The paths and programs that persist from one start to the next.
struct PersistedPaths {
    std::string ProgramDir;
    std::string DataDir;
    std::string LastFile;
    std::vector<std::string> RecentFiles; ///< files opened or saved, newest first
    std::string LastSetupFile;
    std::string SiblingProgramDir;
    std::string ViewerProgram;
    std::string SpreadsheetProgram;
    std::string WindowsDir; ///< environment "WINDIR" followed by a backslash, or empty
};

/// Up to 16 trials of one shape, laid over each other.
struct OverlaySet {
    std::int16_t OverlayCount = 0;
    std::array<TrialPtr, 16> OverlayData;
    SamplingSettings OverlaySettings; ///< how the first overlay was taken; later ones must be compatible
};

/// What a command threw away and can bring back.
struct Cleared {
    std::optional<TrialAverage> average;
    std::weak_ptr<const TrialArray> averaged; ///< samples of the trial that was current then, if `average` has it
    std::optional<OverlaySet> overlays;

    bool empty() const { return !average && !overlays; }
};

/// Everything that the whole program shares. Made once in main and handed on by reference.
struct ProgramState {
    AcqSettings settings;
    TrialBuffers trials;
    StateFlags flags;
    RunStatus run;
    PersistedPaths paths;
    std::string LastTabExport; ///< path of the last tab-delimited export; empty until one is made
    std::string DataFile;      ///< the file last opened, or last written as a table
    // What the next trial will carry: the labels and units of its channels, its comments, and what the sibling program
    // keeps in a file.
    LmbHeader header;
    LmbInfoA infoA{};
    LmbInfoB infoB{};
    TrialComments comments{};
    OverlaySet overlays;
    Cleared cleared;                    ///< what Undo brings back
    bool autosaveWithoutAsking = false; ///< autosave writes into the data directory and shows no dialog
    std::string nameWithoutTrial;       ///< the name that a setup file gave before there was a trial
    std::string notice;                 ///< what the user was told last; stands beside what a run says
    std::string fileWork;               ///< the work on a file that is going on, as "Saving x.lmb ..."; else empty

    /// The current trial's name, stem of every output file name.
    const std::string& TrialName() const { return trials.CurrentTrial ? trials.CurrentTrial->name : nameWithoutTrial; }
    /// A trial was collected or opened; enables the data commands. It may hold no samples (see hasCurrentTrial).
    bool DataPresent() const { return trials.CurrentTrial != nullptr; }
    bool Unsaved() const { return trials.CurrentTrial && trials.CurrentTrial->Unsaved; }
    bool TrialNotSaved() const { return trials.CurrentTrial && trials.CurrentTrial->TrialNotSaved; }
    /// The real-time view owns the analog-input control.
    bool RealTimeMode() const { return run.phase == RunPhase::RealTime; }

    /// Puts a trial over the same samples in the current one's place, also where that is the last trial too. There is a
    /// current trial.
    template <class Change>
    void changeCurrent(Change&& change) {
        const bool alsoLast = trials.LastTrial == trials.CurrentTrial;
        trials.CurrentTrial = changed(trials.CurrentTrial, std::forward<Change>(change));
        if (alsoLast) trials.LastTrial = trials.CurrentTrial;
    }
    /// Renames the current trial, or gives the name that stands where there is none.
    void rename(const std::string& name) {
        if (trials.CurrentTrial)
            changeCurrent([&](Trial& trial) { trial.name = name; });
        else
            nameWithoutTrial = name;
    }
};

/// Whether the current trial really holds samples that a command can use. A collection in debug mode leaves one
/// without.
inline bool hasCurrentTrial(const ProgramState& state) {
    return state.trials.CurrentTrial && state.trials.CurrentTrial->hasSamples();
}

} // namespace tavex2
