#pragma once

#include "acquisition/RunPlan.h"
#include "acquisition/RunView.h"
#include "acquisition/records/ProgramState.h"
#include "platform/CWAI.h"
#include "platform/CWDIO.h"
#include "platform/EventLoop.h"
#include "platform/Messages.h"
#include "platform/MillisecondClock.h"
#include "platform/SoundOutput.h"

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace tavex2 {

/// What a run controller works with; all of it outlives the controller.
struct RunServices {
    CWAI& analogInput;
    CWDIO& digitalOutput;
    MillisecondClock& clock;
    EventLoop& events;
    Messages& messages;
    SoundOutput& sound;
    RunView& view;
    TrialSink& sink;
    std::function<double()> random; ///< uniform in [0, 1)
    std::filesystem::path toneFile; ///< the tone that is played before or after a trial
};

/// Runs collections and the real-time view: makes the plan of a collection, configures and starts the analog-input
/// control by it, gives the stimuli, makes trials of what is delivered and hands them on. The window, the command line
/// and the tests drive the same code. It writes ProgramState::run and the trials; what is shown follows from these.
/// User-interface thread only; never shows anything itself.
class RunController {
  public:
    RunController(ProgramState& state, RunServices services);
    ~RunController();
    RunController(const RunController&) = delete;
    RunController& operator=(const RunController&) = delete;

    /// The tool bar's "Collect": ends a real-time view, checks that there is a board, then starts a collection. Without
    /// effect while one runs.
    void Collect();

    /// Starts one collection; it goes on by events. Without effect while one runs.
    void mnuAcquire_Click();

    /// Starts the real-time view: the board delivers without trigger and without end, every block is shown and nothing
    /// is stored. A failure is shown and the view stays on, without blocks, until Stop. Without effect while it or a
    /// collection runs.
    void mnuRealTime_Click();

    /// The tool bar's "Stop": ends the real-time view; else asks whether to lose the trial being taken, and ends the
    /// collection or its pause.
    void Stop();

    /// While one of these lives, trials that arrive wait: the current trial stays what it is. Whoever lets events run
    /// while working on the current trial (a save dialog, a long file) holds one.
    class Hold {
      public:
        explicit Hold(RunController& run) : m_run(run) { ++m_run.m_holds; }
        ~Hold() {
            --m_run.m_holds;
            m_run.deliverArrived();
        }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

      private:
        RunController& m_run;
    };

    /// Shows the description of a failed control operation; nothing for 0.
    void ShowDaqError(int code);

    /// A collection is being prepared or taken, or a trial that arrived is still being handed on.
    bool busy() const { return collecting(m_state.run.phase) || m_delivering; }

    /// How the last collection ended.
    RunOutcome outcome() const { return m_outcome; }

  private:
    void enter(RunPhase next);
    void begin(RunPlan plan);
    bool configure();
    bool askToResetChannels();
    void start();
    void finish(RunOutcome outcome, std::string notice = {});
    void refuse(int code);
    void endWithoutBoard();
    bool confirmStop();
    void stopCollection();
    void showRealTime(const AnalogBlock& block);
    void endRealTime();

    void whenDelivered(std::function<void()> event);
    void deliverArrived();
    void takeBlock(const AnalogBlock& block);
    void takeError(const AnalogError& error);
    void takeProgress(const AnalogProgress& progress);
    std::shared_ptr<Trial> trialOf(const TrialData& samples, std::int64_t firstScan) const;
    void takeTrial(std::shared_ptr<Trial> trial);
    void handOn();
    void playTone();

    ProgramState& m_state;
    RunServices m_services;
    RunOutcome m_outcome = RunOutcome::None;
    RunPlan m_plan; ///< of the collection in progress, or the last one
    int m_run = 0;  ///< its number; a timer of another one is stale
    std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true); ///< a timer may outlive the controller
    bool m_watchDriven = false;                      ///< the real-time view has started the board
    std::chrono::system_clock::time_point m_started; ///< when the board was started
    std::vector<std::vector<GivenPulse>> m_pulses;   ///< of each repeat
    int m_holds = 0;                                 ///< while above 0, arrived events wait
    bool m_delivering = false;
    std::deque<std::function<void()>> m_arrived; ///< events waiting until the one before has been dealt with
};

} // namespace tavex2
