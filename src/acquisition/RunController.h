#pragma once

#include "acquisition/RunPhase.h"
#include "acquisition/RunView.h"
#include "acquisition/records/ProgramState.h"
#include "platform/CWAI.h"
#include "platform/CWDIO.h"
#include "platform/EventLoop.h"
#include "platform/Messages.h"
#include "platform/MillisecondClock.h"
#include "platform/SoundOutput.h"

#include <deque>
#include <filesystem>
#include <functional>

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

/// Runs collections: configures and starts the analog-input control from the settings, times the stimuli, takes the
/// delivered trials into the buffers and hands them on. The window, the command line and the tests drive the same code.
/// User-interface thread only; never shows anything itself.
class RunController {
  public:
    RunController(ProgramState& state, RunServices services);
    ~RunController();
    RunController(const RunController&) = delete;
    RunController& operator=(const RunController&) = delete;

    /// The tool bar's "Collect": checks that there is a board, then starts a collection. Without effect while one runs.
    void Collect();

    /// Starts one collection. Without effect while one runs.
    void mnuAcquire_Click();

    /// Starts the real-time view: the board delivers without trigger and without end, every block is shown and nothing
    /// is stored. A failure is shown and the view stays on, without blocks, until Stop. Without effect while it runs;
    /// while a collection runs only the status text says so.
    void mnuRealTime_Click();

    /// The tool bar's "Stop": ends the real-time view; else asks whether to lose the trial being taken, and ends the
    /// collection or its pause.
    void Stop();

    /// Empties the average.
    void mnuClearAverage_Click();

    /// While one of these lives, trials that arrive wait: the current trial and its name stay what they are. Whoever
    /// lets events run while working on the current trial (a save dialog, a long file) holds one.
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

    RunPhase phase() const { return m_phase; }

    /// A collection is being prepared or taken, or a trial that arrived is still being handed on.
    bool busy() const { return m_phase != RunPhase::Idle || m_delivering; }

    /// A collection runs of which no trial has arrived yet: the name is already the new trial's, the samples are still
    /// those of the one before, and the two must not be saved together.
    bool awaitsFirstTrial() const { return m_phase != RunPhase::Idle && m_trialsTaken == 0; }

    /// How the last collection ended.
    RunOutcome outcome() const { return m_outcome; }

  private:
    /// What a collection that yields no trial puts back.
    struct Checkpoint {
        StateFlags flags;
        std::string trialName;
        bool addedToAverage = false;
    };

    void enter(RunPhase next);
    std::string obstacle() const;
    bool configure();
    bool askToResetChannels();
    void pauseBeforeStart();
    void RunStimulusPulses();
    bool confirmStop();
    void finish(RunOutcome outcome);
    void refuse(int code);
    void showRealTime(const AnalogBlock& block);
    void endRealTime();

    void whenDelivered(std::function<void()> event);
    void deliverArrived();
    void takeBlock(const AnalogBlock& block);
    void takeError(const AnalogError& error);
    void takeProgress(const AnalogProgress& progress);
    void takeTrial(const TrialData& trial, const std::string& name);
    void handOn();
    void playTone();
    bool triggered() const;
    std::string trialNameInRun() const;

    Checkpoint checkpoint() const;
    void restore();

    ProgramState& m_state;
    RunServices m_services;
    RunPhase m_phase = RunPhase::Idle;
    RunOutcome m_outcome = RunOutcome::None;
    SamplingSettings m_runSettings; ///< the sampling settings of the collection in progress
    Checkpoint m_checkpoint;
    std::string m_runName;         ///< name of the collection's first trial
    int m_trialsTaken = 0;         ///< trials of the collection that have arrived
    std::int64_t m_shownCount = 0; ///< progress count whose repeat stands in the status bar
    bool m_asking = false;         ///< the Stop question is open
    int m_holds = 0;               ///< while above 0, arrived events wait
    bool m_delivering = false;
    std::deque<std::function<void()>> m_arrived; ///< events waiting until the one before has been dealt with
};

} // namespace tavex2
