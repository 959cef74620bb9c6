#include "analysis/TrialSetCommands.h"

#include "analysis/Overlays.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tavex2 {

namespace {

/// Whether the set has these samples, under whatever name.
bool holds(const OverlaySet& overlays, const TrialPtr& trial) {
    const auto end = overlays.OverlayData.begin() + overlays.OverlayCount;
    return std::any_of(overlays.OverlayData.begin(), end,
                       [&](const TrialPtr& each) { return each->samples == trial->samples; });
}

std::string trialsText(int count) {
    return std::to_string(count) + (count == 1 ? " trial." : " trials.");
}

} // namespace

TrialSetCommands::TrialSetCommands(ProgramState& state, Messages& messages, TrialSetView view)
    : m_state(state), m_messages(messages), m_view(std::move(view)) {}

void TrialSetCommands::tell(const std::string& notice) {
    m_state.notice = notice;
    m_view.refresh();
}

void TrialSetCommands::mnuOverlay_Click() {
    if (!hasCurrentTrial(m_state)) { // after a collection in debug mode
        tell("There is no trial to overlay.");
        return;
    }
    if (const Result<void> added = AddOverlay(m_state.overlays, m_state.trials.CurrentTrial); !added) {
        m_messages.show({added.error().text, "Error", MessageIcon::None, MessageButtons::Ok});
        return;
    }
    m_state.changeCurrent([](Trial& trial) { trial.AddedToOverlays = true; });
    tell(std::to_string(m_state.overlays.OverlayCount) + " of " + std::to_string(m_state.overlays.OverlayData.size()) +
         " overlaid");
}

void TrialSetCommands::mnuClear_Click() {
    if (m_state.overlays.OverlayCount == 0) {
        tell("There is no overlay to clear.");
        return;
    }
    m_state.cleared = {.average = std::nullopt, .averaged = {}, .overlays = m_state.overlays};
    ClearOverlays(m_state.overlays);
    if (m_state.DataPresent()) m_state.changeCurrent([](Trial& trial) { trial.AddedToOverlays = false; });
    tell("The overlay is cleared; Edit > Undo brings it back.");
}

void TrialSetCommands::mnuClearAverage_Click() {
    if (m_state.trials.average.empty()) { // there is nothing to bring back, and what was cleared before stays there
        tell("There is no average to clear.");
        return;
    }
    const TrialPtr& current = m_state.trials.CurrentTrial;
    m_state.cleared = {.average = m_state.trials.average,
                       .averaged = current && current->AddedToAverage ? current->samples : nullptr,
                       .overlays = std::nullopt};
    ClearAverage(m_state.trials.average);
    m_view.RedrawTrials();
    tell("The average is cleared; Edit > Undo brings it back.");
}

void TrialSetCommands::mnuUndo_Click() {
    Cleared cleared = std::exchange(m_state.cleared, {});
    if (cleared.average) {
        m_state.trials.average = std::move(*cleared.average);
        if (m_state.DataPresent())
            m_state.changeCurrent([averaged = cleared.averaged.lock()](Trial& trial) {
                trial.AddedToAverage = averaged && trial.samples == averaged;
            });
        m_view.RedrawTrials();
        tell("The average is back, with " + trialsText(m_state.trials.average.AverageCount));
    } else if (cleared.overlays) {
        m_state.overlays = std::move(*cleared.overlays);
        if (m_state.DataPresent())
            m_state.changeCurrent(
                [&](Trial& trial) { trial.AddedToOverlays = holds(m_state.overlays, m_state.trials.CurrentTrial); });
        tell("The overlay is back, with " + trialsText(m_state.overlays.OverlayCount));
    }
}

} // namespace tavex2
