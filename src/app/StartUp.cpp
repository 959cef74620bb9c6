#include "app/StartUp.h"

#include "acquisition/Sound.h"
#include "app/StoredSettings.h"
#include "base/PathText.h"
#include "files/RecentFiles.h"
#include "platform/AtomicFile.h"

#include <system_error>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

constexpr const char* defaultViewer = "Notepad.exe";
constexpr const char* defaultSpreadsheet = "Excel.exe";

/// Sound fields stay zero on a machine that cannot play anything.
int findSound(SoundSettings& sound, const StartUpServices& services) {
    const int devices = services.sound.deviceCount();
    if (devices == 0) return 0;
    sound = defaultTone();
    // A tone that cannot be written is a tone that is not heard: no reason to keep the program from starting.
    (void)WriteTone(services.toneFile, sound.SoundFreq, sound.SoundDuration);
    return devices;
}

void readPaths(ProgramState& state, const StartUpServices& services, const std::string& currentDirectory) {
    const SettingsStore& store = services.store;
    const std::string programFolder = services.programFolder.string();
    PersistedPaths& paths = state.paths;
    paths.ProgramDir = readText(store, stored::programDir, programFolder);
    paths.DataDir = readText(store, stored::dataDir, currentDirectory);
    paths.LastFile = readText(store, stored::lastFile, "");
    paths.RecentFiles = recentFilesOf(readText(store, stored::recentFiles, ""));
    paths.LastSetupFile = readText(store, stored::lastSetupFile, "");
    paths.SiblingProgramDir = readText(store, stored::siblingProgramDir, programFolder);
    paths.ViewerProgram = readText(store, stored::viewer, defaultViewer);
    paths.SpreadsheetProgram = readText(store, stored::spreadsheet, defaultSpreadsheet);
    state.settings.setup.StartMaximized = readBoolean(store, stored::fullscreen);
    for (const OwnSetting& setting : ownSettings(state))
        readOwn(store, setting);
}

} // namespace

StartUpResult startUp(ProgramState& state, const StartUpServices& services) {
    StartUpResult result;
    state = ProgramState{};
    result.waveDevices = findSound(state.settings.sound, services);

    std::error_code ignored;
    const std::string currentDirectory = fs::current_path(ignored).string();
    readPaths(state, services, currentDirectory);

    PersistedPaths& paths = state.paths;
    paths.WindowsDir = services.environment("WINDIR").value_or("");
    if (!paths.WindowsDir.empty()) paths.WindowsDir += "\\";
    if (paths.ViewerProgram.empty()) paths.ViewerProgram = paths.WindowsDir + defaultViewer;
    if (paths.SpreadsheetProgram.empty()) paths.SpreadsheetProgram = defaultSpreadsheet;

    if (paths.DataDir.empty()) paths.DataDir = currentDirectory;
    fs::current_path(pathFromText(paths.DataDir), ignored);
    for (const fs::path& folder : {pathFromText(paths.DataDir), services.toneFile.parent_path()})
        removeAbandonedFiles(folder);

    if (services.digitalOutput.lines() > 0) services.digitalOutput.write(0);
    result.maximized = state.settings.setup.StartMaximized;
    return result;
}

SoundSettings defaultTone() {
    return {
        .SoundBefore = false, .SoundAvailable = true, .SoundFreq = 500.0, .SoundDuration = 1.0, .SoundAfter = false};
}

std::filesystem::path toneFileIn(const std::filesystem::path& programFolder, const std::filesystem::path& userFolder) {
    std::error_code ignored;
    if (checkWritable(programFolder)) return programFolder / toneFileName;
    fs::create_directories(userFolder, ignored);
    return userFolder / toneFileName;
}

} // namespace tavex2
