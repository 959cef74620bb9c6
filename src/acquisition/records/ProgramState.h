#pragma once

#include "acquisition/records/AcqSettings.h"
#include "acquisition/records/LmbHeader.h"
#include "acquisition/records/TrialBuffers.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tavex2 {

/// The main window's state flags.
struct StateFlags {
    bool Unsaved = false;        ///< the current trial is not yet saved; drives the caption's suffix
    bool TrialNotSaved = false;  ///< drives the question at exit
    bool DataPresent = false;    ///< a trial exists; enables the data commands
    bool RealTimeMode = false;   ///< the real-time view owns the analog-input control
    bool DebugMode = false;      ///< no A/D hardware is driven
    bool TriggerEnabled = false; ///< triggering was chosen at the last confirmation of the setup
    bool LegendShown = false;
    bool ShowLastTrial = true;
    bool ShowAveragedTrials = true;
    bool AddedToOverlays = false; ///< the current trial is already among the overlays
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
    std::array<TrialData, 16> OverlayData;
    std::array<std::string, 16> OverlayNames;
    SamplingSettings OverlaySettings; ///< how the first overlay was taken; later ones must be compatible
};

/// Everything that the whole program shares. Made once in main and handed on by reference.
struct ProgramState {
    AcqSettings settings;
    TrialBuffers trials;
    StateFlags flags;
    PersistedPaths paths;
    std::string TrialName;     ///< the current trial's name, stem of every output file name
    std::string LastSavedName; ///< name under which the current trial was last saved; empty when it was not
    std::string LastTabExport; ///< path of the last tab-delimited export; empty until one is made
    std::string DataFile;      ///< the file last opened, or last written as a table
    LmbHeader header;
    LmbInfoA infoA{};
    LmbInfoB infoB{};
    TrialComments comments{};
    OverlaySet overlays;
    bool autosaveWithoutAsking = false; ///< autosave writes into the data directory and shows no dialog
};

/// Whether the current-trial buffer really holds samples that a command can use. DataPresent alone may be True without
/// any (after a collection in debug mode).
inline bool hasCurrentTrial(const ProgramState& state) {
    return state.trials.CurrentTrial && !state.trials.CurrentTrial->empty();
}

} // namespace tavex2
