#pragma once

#include "acquisition/records/Trial.h"
#include "base/Result.h"
#include "platform/SettingsStore.h"
#include "platform/SoundOutput.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tavex2 {

/// Exit codes of the program.
inline constexpr int exitDone = 0;
inline constexpr int exitFailed = 1;
inline constexpr int exitWrongUsage = 2;

/// A picture of a trial to be made.
struct TrialPicture {
    TrialData trial;
    double rateHz = 0;
    std::string title;
    std::vector<std::string> labels; ///< one a channel
    std::filesystem::path path;      ///< a .png, .pdf or .svg file
    int widthPixels = 1000;
    int heightPixels = 600;
};

/// What the commands need from outside.
struct CommandLineServices {
    std::ostream& out;
    std::ostream& err;
    const SettingsStore& store;
    std::function<Result<void>(const TrialPicture&)> drawPicture; ///< the windows' part of the program draws
    std::function<std::unique_ptr<SoundOutput>()> openSound;      ///< asked for only when a tone is to be heard
};

/// How the window is to be opened.
struct WindowRequest {
    std::optional<std::string> board = std::nullopt; ///< a board specification or device number
    std::vector<std::string> settings{};             ///< NAME=VALUE
    std::vector<std::filesystem::path> files{};      ///< to be opened one after the other, absolute paths
};

/// What the command line asked for: an exit code of a command that has run, or a window to open.
struct CommandLineResult {
    int exitCode = 0;
    std::optional<WindowRequest> window;
};

/// Reads the command line and runs the command it names. Exit codes: 0 done, 1 failed (one line on `err` says what to
/// do), which includes output that could not be written, 2 wrong usage. Control characters, in names and in what files
/// hold, are shown by their number.
CommandLineResult runCommandLine(int argc, const char* const* argv, const CommandLineServices& services);

} // namespace tavex2
