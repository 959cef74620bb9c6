#pragma once

#include "acquisition/records/ProgramState.h"
#include "platform/Messages.h"
#include "platform/SettingsStore.h"

#include <functional>

namespace tavex2 {

/// The end of the program: asks about a trial that was not saved, then stores the persisted settings and asks once more
/// when they could not be stored. `saveTrial` runs the binary save and says whether the trial was saved. True when the
/// program may end; False keeps it running: the trial was to be saved and was not, or the user cancelled a question. Up
/// to the question about the trial nothing is stored.
bool prepareExit(ProgramState& state, Messages& messages, SettingsStore& store, const std::function<bool()>& saveTrial);

} // namespace tavex2
