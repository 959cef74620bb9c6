#include "acquisition/RunController.h"

#include "acquisition/AcqFields.h"
#include "acquisition/StartCondition.h"
#include "base/Rounding.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstdio>
#include <limits>
#include <utility>

namespace tavex2 {

namespace {

/// The trial number as file names carry it: at least four digits.
std::string trialDigits(int number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04d", number);
    return text.data();
}

/// A number in the general format: no fixed decimals, no trailing zeros.
std::string generalNumber(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.15g", value);
    return text.data();
}

constexpr const char* lineBreak = "\r\n";

} // namespace

RunController::RunController(ProgramState& state, RunServices services)
    : m_state(state), m_services(std::move(services)) {
    CWAI& input = m_services.analogInput;
    input.onData = [this](const AnalogBlock& block) {
        // A block to look at waits for nothing: it stores nothing, and the next one is on its way.
        if (m_state.flags.RealTimeMode)
            showRealTime(block);
        else
            whenDelivered([this, block] { takeBlock(block); });
    };
    input.onError = [this](const AnalogError& error) { whenDelivered([this, error] { takeError(error); }); };
    input.onProgress = [this](const AnalogProgress& progress) { takeProgress(progress); };
}

RunController::~RunController() {
    m_services.analogInput.Stop();
    m_services.analogInput.onData = nullptr;
    m_services.analogInput.onError = nullptr;
    m_services.analogInput.onProgress = nullptr;
}

void RunController::enter(RunPhase next) {
    assert(canEnter(m_phase, next));
    m_phase = next;
}

// Starting ------------------------------------------------------------------------------------------------------------

void RunController::Collect() {
    if (busy()) return;
    endRealTime();
    m_services.analogInput.selectDevice(m_state.settings.setup.Device);
    if (m_services.analogInput.deviceDescription() == "Device: none" && !m_state.flags.DebugMode) {
        m_outcome = RunOutcome::Refused;
        m_services.messages.show({"No A/D device was selected or none was found.\n"
                                  "Try changing the A/D Device number in the Properties menu.\n\n"
                                  "Data collection cancelled.",
                                  "No A/D Device", MessageIcon::Critical, MessageButtons::Ok});
        return;
    }
    mnuAcquire_Click();
}

void RunController::mnuAcquire_Click() {
    if (busy()) return;
    if (const std::string reason = obstacle(); !reason.empty()) {
        m_outcome = RunOutcome::Refused;
        m_services.messages.show({reason, "Error", MessageIcon::Exclamation, MessageButtons::Ok});
        return;
    }
    SetupOptions& setup = m_state.settings.setup;
    enter(RunPhase::Preparing);
    m_outcome = RunOutcome::None;
    m_checkpoint = checkpoint();
    RunView& view = m_services.view;
    const StateFlags& flags = m_state.flags;

    m_state.trials.LastTrial = m_state.trials.CurrentTrial;
    m_state.trials.LastSettings = m_state.trials.CurrentSettings;
    ++setup.TrialNumber;
    m_state.TrialName = setup.FilePrefix + trialDigits(setup.TrialNumber);
    m_runName = m_state.TrialName;
    m_trialsTaken = 0;
    m_state.trials.AddedToAverage = false;
    if (m_services.digitalOutput.lines() > 0) m_services.digitalOutput.write(0);
    view.setStopEnabled(true);

    if (!configure()) return;
    if (!askToResetChannels()) return;

    view.setBusyPointer(true);
    pauseBeforeStart();
    if (m_phase == RunPhase::Idle) return; // stopped during the pause

    if (m_state.settings.sound.SoundBefore) playTone();
    m_services.clock.waitForNextMillisecond();
    view.setStatusText(flags.TriggerEnabled ? "Waiting for trigger before acquiring data" : "Acquiring data");
    if (triggered()) view.setWaitingShown(true);

    enter(RunPhase::Running);
    m_shownCount = 0;
    if (!flags.DebugMode) {
        if (const int code = m_services.analogInput.Start(); code != 0) {
            refuse(code);
            return;
        }
    }
    RunStimulusPulses();
    m_state.flags.Unsaved = true;
    m_state.flags.TrialNotSaved = true;
    m_state.flags.DataPresent = true;
    m_state.flags.AddedToOverlays = false;

    if (flags.DebugMode) {
        // No data will come. The buffer still holds the trial before, which stays in the average only once.
        m_state.trials.AddedToAverage = m_checkpoint.addedToAverage;
        finish(RunOutcome::NoBoard);
        view.UpdateMenus();
        view.UpdateCaption();
    }
}

/// Why no collection can start with the settings as they are; empty when one can.
std::string RunController::obstacle() const {
    const AcqSettings& settings = m_state.settings;
    if (const auto usable = checkCollectable(settings, m_state.flags.TriggerEnabled); !usable)
        return "These settings cannot be collected with. " + usable.error().text + " Correct it in the setup.";
    if (settings.setup.TrialNumber == std::numeric_limits<std::int16_t>::max())
        return "The trial number cannot go above 32767. Set a smaller number in the setup.";
    return {};
}

bool RunController::configure() {
    CWAI& input = m_services.analogInput;
    describeSampling(m_state.settings, input);
    m_runSettings = m_state.settings.sampling;
    if (m_state.flags.DebugMode) return true;
    if (const int code = input.Configure(); code != 0) {
        refuse(code);
        return false;
    }
    m_state.settings.sampling.NumChannels = static_cast<std::int16_t>(input.numChannels());
    return true;
}

bool RunController::askToResetChannels() {
    if (!m_state.settings.setup.PauseToReset) return true;
    const MessageAnswer answer =
        m_services.messages.show({"Reset channels and press OK when ready to start collection.", "Reset Channels Now",
                                  MessageIcon::Question, MessageButtons::OkCancel});
    if (answer == MessageAnswer::Ok) return true;
    // What has been done so far stays done: the number stays advanced and Stop enabled. Only the mark that the trial in
    // the buffer is part of the average comes back, or saving that trial again would count it twice.
    m_state.trials.AddedToAverage = m_checkpoint.addedToAverage;
    m_outcome = RunOutcome::Stopped;
    enter(RunPhase::Idle);
    return false;
}

void RunController::pauseBeforeStart() {
    const std::int64_t delayMs = std::int64_t{m_state.settings.setup.StartDelay} * 1000;
    if (delayMs <= 0) return;
    enter(RunPhase::Pausing);
    m_services.view.setStatusText("Pausing");
    const std::int64_t end = m_services.clock.milliseconds() + delayMs;
    while (m_phase == RunPhase::Pausing && m_services.clock.milliseconds() < end) {
        m_services.events.processPending();
        m_services.clock.waitForNextMillisecond();
    }
}

void RunController::RunStimulusPulses() {
    constexpr int pulsedLines = 3;
    const SamplingSettings& sampling = m_runSettings;
    const unsigned mask = sampling.DIOMask & ((1U << pulsedLines) - 1U);
    if (mask == 0) return;

    MillisecondClock& clock = m_services.clock;
    std::int64_t start = clock.milliseconds();
    constexpr double longestMs = 3600e3; // of a trial; in debug mode no board has refused a wilder duration
    const double durationMs = static_cast<double>(sampling.Duration) * 1000.0;
    const std::int64_t trialMs = durationMs <= longestMs ? roundHalfEven(std::max(durationMs, 0.0)) : 0;
    for (int repeat = 0; repeat < sampling.Repeat; ++repeat) {
        unsigned pending = mask;
        unsigned output = 0;
        while (pending != 0 || output != 0) {
            const std::int64_t elapsed = clock.milliseconds() - start;
            output = 0;
            for (unsigned line = 0; line < pulsedLines; ++line) {
                const unsigned bit = 1U << line;
                if ((pending & bit) == 0 || elapsed < sampling.DIOLatency[line]) continue;
                output |= bit;
                pending &= ~bit;
            }
            if (!m_state.flags.DebugMode) m_services.digitalOutput.write(static_cast<std::uint8_t>(output));
            clock.waitForNextMillisecond();
        }
        start += trialMs;
    }
}

void RunController::refuse(int code) {
    finish(RunOutcome::Refused);
    restore();
    m_services.view.UpdateMenus();
    ShowDaqError(code);
}

void RunController::finish(RunOutcome outcome) {
    RunView& view = m_services.view;
    view.setBusyPointer(false);
    view.setWaitingShown(false);
    view.setStopEnabled(false);
    view.showProgress(std::nullopt);
    m_outcome = outcome;
    enter(RunPhase::Idle);
}

// Stopping ------------------------------------------------------------------------------------------------------------

void RunController::Stop() {
    RunView& view = m_services.view;
    view.setWaitingShown(false);
    if (m_state.flags.RealTimeMode) {
        endRealTime();
    } else {
        if (m_asking) return;
        const bool wasRunning = m_phase != RunPhase::Idle;
        if (!confirmStop()) return;
        if (wasRunning) {
            if (m_phase == RunPhase::Idle) return;
            restore();
        }
        view.RedrawTrials();
        view.UpdateMenus();
        view.UpdateCaption();
    }
    finish(RunOutcome::Stopped);
    view.setStatusText("Stopped");
}

/// Asks whether to lose the trial being taken, and stops the board on Yes. Trials that arrive while the question is
/// open wait for the answer; one that was complete before it is kept either way.
bool RunController::confirmStop() {
    const Hold whileAsking(*this);
    m_asking = true;
    const MessageAnswer answer =
        m_services.messages.show({"Press Yes to stop A/D collection.  Data from current trial will be lost.",
                                  "Stop Current Trial", MessageIcon::Question, MessageButtons::YesNo});
    m_asking = false;
    if (answer == MessageAnswer::Yes) {
        if (!m_state.flags.DebugMode) m_services.analogInput.Stop();
        return true;
    }
    if (m_phase == RunPhase::Running && triggered()) m_services.view.setWaitingShown(true);
    return false;
}

RunController::Checkpoint RunController::checkpoint() const {
    return {m_state.flags, m_state.TrialName, m_state.trials.AddedToAverage};
}

/// Puts back what the start of a collection changed. Once a trial of the collection has arrived, the flags and the name
/// are that trial's and stay.
void RunController::restore() {
    if (m_trialsTaken > 0) return;
    StateFlags& flags = m_state.flags;
    flags.Unsaved = m_checkpoint.flags.Unsaved;
    flags.TrialNotSaved = m_checkpoint.flags.TrialNotSaved;
    flags.DataPresent = m_checkpoint.flags.DataPresent;
    flags.AddedToOverlays = m_checkpoint.flags.AddedToOverlays;
    m_state.TrialName = m_checkpoint.trialName;
    m_state.trials.AddedToAverage = m_checkpoint.addedToAverage;
}

// Real-time view ------------------------------------------------------------------------------------------------------

void RunController::mnuRealTime_Click() {
    RunView& view = m_services.view;
    if (busy()) {
        view.setStatusText("A trial is being collected. Stop it before you watch the channels.");
        return;
    }
    if (m_state.flags.RealTimeMode) return;
    const bool driven = !m_state.flags.DebugMode;
    CWAI& input = m_services.analogInput;
    view.setStopEnabled(true);
    describeSampling(m_state.settings, input);
    const StartCondition confirmed = std::exchange(input.config.start, StartCondition{});
    input.config.end = EndCondition::Continuous;
    if (driven) ShowDaqError(input.Configure());

    SamplingSettings& sampling = m_state.settings.sampling;
    sampling.NumChannels = static_cast<std::int16_t>(input.numChannels());
    constexpr std::int64_t mostSamples = std::numeric_limits<std::int32_t>::max();
    sampling.NumSamples = static_cast<std::int32_t>(std::min(input.totalScans(), mostSamples));
    const std::int64_t scans = input.config.chunked ? input.config.chunkScans : input.config.totalScans;
    view.beginRealTime(static_cast<double>(scans - 1) / sampling.Rate);
    view.setStatusText("Acquiring data continuously.  Press Stop button to terminate collection.");
    m_state.flags.RealTimeMode = true;
    if (driven) ShowDaqError(input.Start());
    // What was set for watching ends with it: collections go by the trigger that was confirmed.
    input.config.start = confirmed;
    input.config.end = EndCondition::AfterTotalScans;
}

/// Every block takes the place of the one before.
void RunController::showRealTime(const AnalogBlock& block) {
    m_services.view.showRealTime(block.samples, 1.0 / m_services.analogInput.config.scanRateHz);
}

/// Without effect while there is no real-time view.
void RunController::endRealTime() {
    if (!std::exchange(m_state.flags.RealTimeMode, false)) return;
    if (m_services.analogInput.running()) m_services.analogInput.Stop(); // in debug mode it was never started
    m_services.view.endRealTime();
    m_services.view.setStopEnabled(false);
}

// Events of the analog-input control ----------------------------------------------------------------------------------

/// Runs events one after the other: a trial that arrives while the one before is being commented or saved, or while the
/// Stop question is open, waits its turn.
void RunController::whenDelivered(std::function<void()> event) {
    m_arrived.push_back(std::move(event));
    deliverArrived();
}

void RunController::deliverArrived() {
    if (m_delivering || m_holds > 0) return;
    m_delivering = true;
    while (!m_arrived.empty() && m_holds == 0) {
        const std::function<void()> next = std::move(m_arrived.front());
        m_arrived.pop_front();
        next();
    }
    m_delivering = false;
}

void RunController::takeProgress(const AnalogProgress& progress) {
    if (m_phase != RunPhase::Running) return;
    m_services.view.showProgress(progress);
    if (m_runSettings.Repeat < 2 || progress.waitingForTrigger || progress.count == m_shownCount) return;
    m_shownCount = progress.count;
    const double k = static_cast<double>(progress.count) / static_cast<double>(progress.totalScans);
    m_services.view.setStatusText("Repeat " + generalNumber(k) + " of " + std::to_string(m_runSettings.Repeat));
}

void RunController::takeBlock(const AnalogBlock& block) {
    if (m_phase != RunPhase::Running) return;
    const SoundSettings& sound = m_state.settings.sound;
    const double ratio = m_state.settings.trigger.RandomRatio;
    const int k = static_cast<int>(std::floor(ratio * m_services.random())) + 1;
    if (sound.SoundAfter && k == 1) playTone();

    takeTrial(block.samples, trialNameInRun());
    ++m_trialsTaken;
    if (block.last) finish(RunOutcome::Completed);
    handOn();
}

void RunController::takeError(const AnalogError& error) {
    if (m_phase == RunPhase::Idle && !m_state.flags.RealTimeMode) return;
    const bool realTime = m_state.flags.RealTimeMode;
    endRealTime();
    const bool keeps = !realTime && error.arrived != nullptr;
    finish(RunOutcome::Failed);
    std::string context = error.context;
    if (keeps) {
        takeTrial(error.arrived, trialNameInRun() + "-partial");
        context += " The part of the trial that had arrived (" + std::to_string(error.arrived->samples()) +
                   " samples per channel) is kept as " + m_state.TrialName + ".";
    } else if (!realTime) {
        restore();
    }
    RunView& view = m_services.view;
    view.RedrawTrials();
    view.UpdateMenus();
    view.UpdateCaption();
    m_services.messages.show({"Error: " + std::to_string(error.code) + lineBreak + "Context: " + context + lineBreak +
                                  m_services.analogInput.describe(error.code),
                              "Error", MessageIcon::None, MessageButtons::Ok});
}

/// The name of the trial that is being taken. Each repeat has one of its own, so that none overwrites another's file.
std::string RunController::trialNameInRun() const {
    return m_trialsTaken == 0 ? m_runName : m_runName + "-r" + std::to_string(m_trialsTaken + 1);
}

/// Makes a delivered block the current trial.
void RunController::takeTrial(const TrialData& trial, const std::string& name) {
    TrialBuffers& trials = m_state.trials;
    trials.CurrentTrial = trial;
    trials.CurrentSettings = m_runSettings;
    trials.CurrentSettings.NumChannels = static_cast<std::int16_t>(trial->channels());
    trials.CurrentSettings.NumSamples = static_cast<std::int32_t>(trial->samples());
    trials.AddedToAverage = false;
    m_state.settings.sampling.NumChannels = trials.CurrentSettings.NumChannels;
    m_state.settings.sampling.NumSamples = trials.CurrentSettings.NumSamples;
    m_state.TrialName = name;
    m_state.LastSavedName.clear();
    m_state.flags.Unsaved = true;
    m_state.flags.TrialNotSaved = true;
    m_state.flags.DataPresent = true;
    m_state.flags.AddedToOverlays = false;
}

/// Shows the new current trial and saves it where the settings ask for that.
void RunController::handOn() {
    RunView& view = m_services.view;
    view.RedrawTrials();
    view.setBusyPointer(false);
    view.UpdateMenus();
    view.UpdateCaption();
    const SetupOptions& setup = m_state.settings.setup;
    if (setup.Comments) view.editComments();
    if (setup.Autosave) m_services.sink.autosave(setup.SaveType);
}

/// A start trigger is configured.
bool RunController::triggered() const {
    return m_services.analogInput.config.start.type != StartCondition::Type::None;
}

void RunController::playTone() {
    if (m_state.settings.sound.SoundAvailable && m_services.sound.deviceCount() > 0)
        m_services.sound.playFile(m_services.toneFile);
}

void RunController::mnuClearAverage_Click() {
    ClearAverage(m_state.trials);
    m_services.view.RedrawTrials();
}

void RunController::ShowDaqError(int code) {
    if (code == 0) return;
    m_services.messages.show({"DAQ Error: " + std::to_string(code) + "\r" + m_services.analogInput.describe(code),
                              "Error", MessageIcon::None, MessageButtons::Ok});
}

} // namespace tavex2
