#include "acquisition/RunPlan.h"

#include "acquisition/AcqFields.h"
#include "acquisition/StartCondition.h"
#include "base/Decimal.h"

#include <limits>

namespace tavex2 {

std::string RunPlan::nameOf(int repeat) const {
    return repeat == 0 ? name : name + "-r" + std::to_string(repeat + 1);
}

Result<RunPlan> planRun(const ProgramState& state, const StartCondition& start) {
    const auto& [setup, sampling, trigger, sound] = state.settings;
    if (const auto problem = collectionProblem(state.settings, state.flags.TriggerEnabled))
        return Error{ErrorKind::InvalidValue, "These settings cannot be collected with. " + boxOf(problem->field) +
                                                  " " + problem->text + " Correct it in the setup."};
    if (setup.TrialNumber == std::numeric_limits<std::int16_t>::max())
        return Error{ErrorKind::InvalidValue,
                     "The trial number cannot go above 32767. Set a smaller number in the setup."};

    constexpr int digits = 4;
    constexpr std::int64_t millisecondsPerSecond = 1000;
    RunPlan plan;
    plan.driven = !state.flags.DebugMode;
    plan.number = static_cast<std::int16_t>(setup.TrialNumber + 1);
    plan.name = setup.FilePrefix + zeroPadded(plan.number, digits);
    plan.input = configurationFor(state.settings, start);
    plan.sampling = sampling;
    plan.trigger = trigger;
    plan.askToReset = setup.PauseToReset;
    plan.startDelayMs = setup.StartDelay * millisecondsPerSecond;
    plan.toneBefore = sound.SoundBefore && sound.SoundAvailable;
    plan.toneAfter = sound.SoundAfter && sound.SoundAvailable;
    plan.randomRatio = trigger.RandomRatio;
    return plan;
}

} // namespace tavex2
