#include "files/UnsavedTrial.h"

namespace tavex2 {

bool mayReplaceTrial(const ProgramState& state, Messages& messages, const std::function<bool()>& saveTrial) {
    if (!state.flags.TrialNotSaved || !hasCurrentTrial(state)) return true;
    const MessageAnswer answer =
        messages.show({"Your last trial was NOT saved.  Do you want to save it before opening another?",
                       "Last Trial Saved", MessageIcon::Question, MessageButtons::YesNoCancel});
    if (answer == MessageAnswer::Cancel) return false;
    return answer == MessageAnswer::No || saveTrial();
}

} // namespace tavex2
