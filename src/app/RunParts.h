#pragma once

#include "acquisition/RunController.h"
#include "platform/AnalogInput.h"
#include "platform/BoardList.h"
#include "platform/DigitalOutput.h"

#include <filesystem>
#include <random>

namespace tavex2 {

/// What a run is made of besides the program's state; all of it outlives the run.
struct RunSurroundings {
    const BoardList& boards;
    EventLoop& events;
    MillisecondClock& clock;
    Messages& messages;
    SoundOutput& sound;
    RunView& view;
    TrialSink& sink;
    std::filesystem::path toneFile;
};

/// The run controller with the board's controls, put together in one way for the window and the command line.
class RunParts {
    std::mt19937 m_generator{std::random_device{}()};
    ProgramState& m_state;

  public:
    RunParts(ProgramState& state, const RunSurroundings& around);

    /// Applies the settings to the board's controls as the OK of the setup dialog does: the device is selected, and the
    /// trigger is the one that is in force.
    void confirmSettings();

    AnalogInput analogInput;
    DigitalOutput digitalOutput{analogInput};
    RunController run;
};

} // namespace tavex2
