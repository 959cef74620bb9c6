#include "app/Exit.h"

#include "app/StoredSettings.h"
#include "files/RecentFiles.h"

namespace tavex2 {

bool prepareExit(const ProgramState& state, Messages& messages, SettingsStore& store,
                 const std::function<bool()>& saveTrial) {
    if (state.TrialNotSaved()) {
        const MessageAnswer answer =
            messages.show({"Your last trial was NOT saved.  Do you want to save it before exiting?", "Last Trial Saved",
                           MessageIcon::Question, MessageButtons::YesNoCancel});
        if (answer == MessageAnswer::Cancel) return false;
        if (answer == MessageAnswer::Yes && !saveTrial()) return false;
    }
    const PersistedPaths& paths = state.paths;
    writeText(store, stored::programDir, paths.ProgramDir);
    writeText(store, stored::dataDir, paths.DataDir);
    writeText(store, stored::lastFile, paths.LastFile);
    writeText(store, stored::recentFiles, recentFilesText(paths.RecentFiles));
    writeText(store, stored::lastSetupFile, paths.LastSetupFile);
    writeBoolean(store, stored::fullscreen, state.settings.setup.StartMaximized);
    writeBoolean(store, stored::autosaveWithoutAsking, state.autosaveWithoutAsking);
    writeText(store, stored::viewer, paths.ViewerProgram);
    writeText(store, stored::spreadsheet, paths.SpreadsheetProgram);
    return true;
}

} // namespace tavex2
