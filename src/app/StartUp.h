#pragma once

#include "acquisition/records/ProgramState.h"
#include "platform/CWDIO.h"
#include "platform/SettingsStore.h"
#include "platform/SoundOutput.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tavex2 {

/// What start-up works with.
struct StartUpServices {
    const SettingsStore& store;
    const SoundOutput& sound;
    CWDIO& digitalOutput;
    std::filesystem::path programFolder; ///< the folder that this program lies in
    std::filesystem::path toneFile;      ///< where the stimulus tone is written when there is a sound device
    std::function<std::optional<std::string>(const char*)> environment; ///< value of an environment variable
};

/// What the window does with the result of start-up.
struct StartUpResult {
    int waveDevices = 0;    ///< wave-output devices found
    bool maximized = false; ///< show the window maximised
};

/// Brings the program to its initial state, before the window is shown: defaults, stored settings, tone file, current
/// directory, stimulus lines low. Failures of single steps leave their defaults and are silent.
StartUpResult startUp(ProgramState& state, const StartUpServices& services);

/// The sound settings of a machine that can play: no tone yet, 500 Hz for one second once one is asked for.
SoundSettings defaultTone();

/// The stimulus tone's place: beside the program, or in the user's data folder where the program's cannot be written
/// to.
std::filesystem::path toneFileIn(const std::filesystem::path& programFolder, const std::filesystem::path& userFolder);

} // namespace tavex2
