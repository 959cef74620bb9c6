#pragma once

#include "acquisition/records/ProgramState.h"
#include "platform/Messages.h"

#include <filesystem>
#include <functional>

namespace tavex2 {

/// Asks what is to become of an unsaved trial that another one would replace; False keeps it. `saveTrial` is the Save
/// command; True when the trial was saved.
bool mayReplaceTrial(const ProgramState& state, Messages& messages, const std::function<bool()>& saveTrial);

/// Makes samples of a file the current trial, taken with the settings' sampling but in the samples' own shape; its name
/// is the program's from now on. It counts as saved (under that name and `extension`), not yet averaged and not yet
/// overlaid.
void enterTrialOfFile(ProgramState& state, TrialArray samples, const std::filesystem::path& path,
                      const char* extension);

} // namespace tavex2
