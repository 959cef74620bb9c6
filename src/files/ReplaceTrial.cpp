#include "files/ReplaceTrial.h"

#include "base/PathText.h"
#include "base/Rounding.h"
#include "files/RecentFiles.h"

#include <memory>
#include <utility>

namespace tavex2 {

namespace {

/// A saved trial of these samples under the name of its file. The sampling's counts are those of the samples.
std::shared_ptr<Trial> trialOf(TrialArray samples, const SamplingSettings& sampling,
                               const std::filesystem::path& path) {
    auto trial = std::make_shared<Trial>();
    trial->name = pathText(path.stem());
    trial->savedName = pathText(path.filename());
    trial->file = trial->record.source = pathText(path);
    trial->sampling = sampling;
    trial->sampling.NumChannels = static_cast<std::int16_t>(samples.channels());
    trial->sampling.NumSamples = static_cast<std::int32_t>(samples.samples());
    trial->samples = std::make_shared<const TrialArray>(std::move(samples));
    trial->Unsaved = trial->TrialNotSaved = false;
    return trial;
}

} // namespace

std::shared_ptr<Trial> trialOf(LmbFile file, const std::filesystem::path& path, const SamplingSettings& settings) {
    SamplingSettings sampling = settings;
    sampling.Rate = static_cast<std::int32_t>(roundHalfEven(file.header.Rate));
    sampling.Duration = static_cast<float>(file.header.Duration);
    sampling.Repeat = 1; // the graphs' extent is that of this one trial
    // The list of the settings belongs to the board; a file's channels are known by their places.
    sampling.Channels.assign("0:" + std::to_string(file.header.NumChannels - 1));
    auto trial = trialOf(std::move(file.samples), sampling, path);
    trial->savedName = trial->name + ".lmb";
    trial->header = file.header;
    trial->infoA = file.infoA;
    trial->infoB = file.infoB;
    trial->comments = file.comments;
    return trial;
}

std::shared_ptr<Trial> trialOf(StimulusFile file, const std::filesystem::path& path) {
    auto trial = trialOf(std::move(file.samples), file.sampling, path);
    trial->savedName = trial->name + ".plv";
    trial->imported = true;
    return trial;
}

bool mayReplaceTrial(const ProgramState& state, Messages& messages, const std::function<bool()>& saveTrial) {
    if (!state.TrialNotSaved() || !hasCurrentTrial(state)) return true;
    const MessageAnswer answer =
        messages.show({"Your last trial was NOT saved.  Do you want to save it before opening another?",
                       "Last Trial Saved", MessageIcon::Question, MessageButtons::YesNoCancel});
    if (answer == MessageAnswer::Cancel) return false;
    return answer == MessageAnswer::No || saveTrial();
}

void enterTrialOfFile(ProgramState& state, std::shared_ptr<Trial> trial, const std::string& folder) {
    trial->number = state.settings.setup.TrialNumber;
    state.DataFile = trial->file;
    rememberFile(state.paths, pathFromText(trial->file));
    state.paths.DataDir = folder;
    state.trials.CurrentTrial = std::move(trial);
}

} // namespace tavex2
