#pragma once

#include "acquisition/records/ProgramState.h"
#include "files/FileView.h"
#include "platform/Messages.h"

namespace tavex2 {

/// Adds the current trial, which has just been saved, to the average, once; the graphs follow. A refusal is told and
/// leaves the trial out.
void enterAverage(ProgramState& state, Messages& messages, FileView& view);

} // namespace tavex2
