#include "files/ReplaceTrial.h"

#include "base/PathText.h"
#include "files/RecentFiles.h"

#include <memory>
#include <utility>

namespace tavex2 {

bool mayReplaceTrial(const ProgramState& state, Messages& messages, const std::function<bool()>& saveTrial) {
    if (!state.flags.TrialNotSaved || !hasCurrentTrial(state)) return true;
    const MessageAnswer answer =
        messages.show({"Your last trial was NOT saved.  Do you want to save it before opening another?",
                       "Last Trial Saved", MessageIcon::Question, MessageButtons::YesNoCancel});
    if (answer == MessageAnswer::Cancel) return false;
    return answer == MessageAnswer::No || saveTrial();
}

void enterTrialOfFile(ProgramState& state, TrialArray samples, const std::filesystem::path& path,
                      const char* extension) {
    TrialBuffers& trials = state.trials;
    trials.CurrentSettings = state.settings.sampling;
    trials.CurrentSettings.NumChannels = static_cast<std::int16_t>(samples.channels());
    trials.CurrentSettings.NumSamples = static_cast<std::int32_t>(samples.samples());
    trials.CurrentTrial = std::make_shared<const TrialArray>(std::move(samples));
    trials.AddedToAverage = false;

    state.TrialName = pathText(path.stem());
    state.LastSavedName = state.TrialName + extension;
    rememberFile(state.paths, path);
    state.DataFile = pathText(path);
    state.flags.DataPresent = true;
    state.flags.Unsaved = false;
    state.flags.TrialNotSaved = false;
    state.flags.AddedToOverlays = false;
}

} // namespace tavex2
