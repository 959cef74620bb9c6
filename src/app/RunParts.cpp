#include "app/RunParts.h"

#include "acquisition/StartCondition.h"

namespace tavex2 {

RunParts::RunParts(ProgramState& state, const RunSurroundings& around)
    : m_state(state), analogInput(around.boards, around.events),
      run(state, {.analogInput = analogInput,
                  .digitalOutput = digitalOutput,
                  .clock = around.clock,
                  .events = around.events,
                  .messages = around.messages,
                  .sound = around.sound,
                  .view = around.view,
                  .sink = around.sink,
                  .random = [this] { return std::uniform_real_distribution<double>(0.0, 1.0)(m_generator); },
                  .toneFile = around.toneFile}) {}

void RunParts::confirmSettings() {
    const AcqSettings& settings = m_state.settings;
    m_state.flags.TriggerEnabled = settings.setup.TriggerMode == 1;
    analogInput.selectDevice(settings.setup.Device);
    analogInput.config.start = startConditionFor(settings, m_state.flags.TriggerEnabled);
}

} // namespace tavex2
