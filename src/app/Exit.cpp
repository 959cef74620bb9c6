#include "app/Exit.h"

#include "app/StoredSettings.h"
#include "files/RecentFiles.h"

#include <utility>

namespace tavex2 {

namespace {

/// Stores every persisted setting, whatever becomes of the others; the error is the first one.
Result<void> storeSettings(ProgramState& state, SettingsStore& store) {
    Result<void> stored;
    const auto note = [&stored](Result<void> written) {
        if (stored) stored = std::move(written);
    };
    const PersistedPaths& paths = state.paths;
    note(writeText(store, stored::programDir, paths.ProgramDir));
    note(writeText(store, stored::dataDir, paths.DataDir));
    note(writeText(store, stored::lastFile, paths.LastFile));
    note(writeText(store, stored::recentFiles, recentFilesText(paths.RecentFiles)));
    note(writeText(store, stored::lastSetupFile, paths.LastSetupFile));
    note(writeBoolean(store, stored::fullscreen, state.settings.setup.StartMaximized));
    for (const OwnSetting& setting : ownSettings(state))
        note(writeOwn(store, setting));
    note(writeText(store, stored::viewer, paths.ViewerProgram));
    note(writeText(store, stored::spreadsheet, paths.SpreadsheetProgram));
    return stored;
}

} // namespace

bool prepareExit(ProgramState& state, Messages& messages, SettingsStore& store,
                 const std::function<bool()>& saveTrial) {
    if (state.TrialNotSaved()) {
        const MessageAnswer answer =
            messages.show({"Your last trial was NOT saved.  Do you want to save it before exiting?", "Last Trial Saved",
                           MessageIcon::Question, MessageButtons::YesNoCancel});
        if (answer == MessageAnswer::Cancel) return false;
        if (answer == MessageAnswer::Yes && !saveTrial()) return false;
    }
    const Result<void> stored = storeSettings(state, store);
    if (stored) return true;
    return messages.show({"What is remembered for the next start could not be stored.\n" + stored.error().text +
                              "\n\nPress Cancel, make room or give yourself the right to write there, and exit again. "
                              "Press OK to exit all the same.",
                          "Settings Not Stored", MessageIcon::Exclamation, MessageButtons::OkCancel}) !=
           MessageAnswer::Cancel;
}

} // namespace tavex2
