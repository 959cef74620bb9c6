#pragma once

#include "app/cli/CommandLine.h"
#include "app/cli/TrialTexts.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tavex2 {

struct CollectRequest {
    std::optional<std::filesystem::path> setup; ///< a setup file, read first
    std::vector<std::string> settings;          ///< NAME=VALUE
    std::optional<std::string> board;
    int trials = 1;
    std::filesystem::path folder = ".";
    std::vector<std::string> formats; ///< extensions without their point; none for what the settings say
    TrialTexts texts;
    bool fast = false;
    std::optional<std::filesystem::path> plot;
    bool json = false;
};

/// Collects trials without a window, through the same run controller as the window, saves each as it arrives and tells
/// it at once. Gives the exit code; every problem is one line on the services' error stream. Existing files are never
/// replaced: the next free name is taken and printed. Interrupting the program stops the collection.
int collectTrials(const CollectRequest& request, const CommandLineServices& services);

} // namespace tavex2
