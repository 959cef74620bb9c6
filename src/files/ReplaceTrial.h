#pragma once

#include "acquisition/records/ProgramState.h"
#include "files/Import.h"
#include "files/StimulusFile.h"
#include "platform/Messages.h"

#include <filesystem>
#include <functional>

namespace tavex2 {

/// What a trial file holds as a trial, which counts as saved, not yet averaged and not yet overlaid. What the file does
/// not tell of how it was sampled is that of `settings`.
std::shared_ptr<Trial> trialOf(LmbFile file, const std::filesystem::path& path, const SamplingSettings& settings);
std::shared_ptr<Trial> trialOf(StimulusFile file, const std::filesystem::path& path);

/// Asks what is to become of an unsaved trial that another one would replace; False keeps it. `saveTrial` is the Save
/// command; True when the trial was saved.
bool mayReplaceTrial(const ProgramState& state, Messages& messages, const std::function<bool()>& saveTrial);

/// Makes a trial of a file the current one: its sampling is the settings' from now on, the labels, units and comments
/// that it has are those of the next trials, and its file is the last one. `folder` becomes the data folder.
void enterTrialOfFile(ProgramState& state, std::shared_ptr<Trial> trial, const std::string& folder);

} // namespace tavex2
