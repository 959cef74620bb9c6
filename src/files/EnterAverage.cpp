#include "files/EnterAverage.h"

namespace tavex2 {

void enterAverage(ProgramState& state, Messages& messages, FileView& view) {
    if (state.trials.CurrentTrial->AddedToAverage) return;
    if (const auto added = AddTrialToAverage(state.trials.average, *state.trials.CurrentTrial); !added) {
        messages.show({added.error().text, "Error", MessageIcon::Exclamation, MessageButtons::Ok});
        return;
    }
    state.changeCurrent([](Trial& trial) { trial.AddedToAverage = true; });
    view.RedrawTrials();
}

} // namespace tavex2
