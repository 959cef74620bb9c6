#pragma once

#include "acquisition/records/ProgramState.h"
#include "platform/Messages.h"

#include <functional>

namespace tavex2 {

/// Asks what is to become of an unsaved trial that another one would replace; False keeps it. `saveTrial` is the Save
/// command; True when the trial was saved.
bool mayReplaceTrial(const ProgramState& state, Messages& messages, const std::function<bool()>& saveTrial);

} // namespace tavex2
