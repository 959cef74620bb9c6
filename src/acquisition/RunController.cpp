#include "acquisition/RunController.h"

#include "acquisition/StartCondition.h"
#include "acquisition/StimulusPulses.h"
#include "platform/LocalTime.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace tavex2 {

namespace {

constexpr const char* lineBreak = "\r\n";

/// What becomes of the trial in the buffer when the next one of a run takes its place; empty when nothing is lost.
std::string replacedUnsaved(const ProgramState& state) {
    const TrialPtr& trial = state.trials.CurrentTrial;
    if (!hasCurrentTrial(state) || !trial->TrialNotSaved) return {};
    return trial->name + " was not saved; " +
           (trial == state.trials.LastTrial ? "it is the last trial." : "the next repeat has taken its place.");
}

} // namespace

RunController::RunController(ProgramState& state, RunServices services)
    : m_state(state), m_services(std::move(services)) {
    CWAI& input = m_services.analogInput;
    input.onData = [this](const AnalogBlock& block) {
        // A block to look at waits for nothing: it stores nothing, and the next one is on its way.
        if (m_state.RealTimeMode())
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

/// A new phase has words of its own, so what was said in the one before is over.
void RunController::enter(RunPhase next) {
    assert(canEnter(m_state.run.phase, next));
    m_state.run.phase = next;
    m_state.notice.clear();
}

// Starting ------------------------------------------------------------------------------------------------------------

void RunController::Collect() {
    if (busy()) return;
    endRealTime();
    CWAI& input = m_services.analogInput;
    input.selectDevice(m_state.settings.setup.Device);
    if (input.deviceDescription() == "Device: none" && !m_state.flags.DebugMode) {
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
    Result<RunPlan> plan = planRun(m_state, m_services.analogInput.config.start);
    if (plan) {
        begin(std::move(plan).value());
        return;
    }
    m_outcome = RunOutcome::Refused;
    m_services.messages.show({plan.error().text, "Error", MessageIcon::Exclamation, MessageButtons::Ok});
}

void RunController::begin(RunPlan plan) {
    m_plan = std::move(plan);
    m_outcome = RunOutcome::None;
    m_pulses.clear();
    const int run = ++m_run;
    RunStatus& status = m_state.run;
    status = {};
    enter(RunPhase::Preparing);
    m_state.trials.LastTrial = m_state.trials.CurrentTrial;
    m_state.settings.setup.TrialNumber = m_plan.number;
    if (m_services.digitalOutput.lines() > 0) m_services.digitalOutput.write(0);
    status.stopEnabled = true;
    status.repeats = m_plan.sampling.Repeat;
    status.rateHz = m_plan.input.scanRateHz;

    if (!configure() || !askToResetChannels()) return;
    if (m_plan.startDelayMs <= 0) {
        start();
        return;
    }
    enter(RunPhase::Pausing);
    m_services.view.refresh();
    m_services.events.after(std::chrono::milliseconds(m_plan.startDelayMs), [this, run, life = std::weak_ptr(m_life)] {
        if (!life.expired() && run == m_run && m_state.run.phase == RunPhase::Pausing) start();
    });
}

bool RunController::configure() {
    CWAI& input = m_services.analogInput;
    m_state.settings.sampling.Channels.assign(m_plan.input.channelList);
    input.selectDevice(m_state.settings.setup.Device);
    input.config = m_plan.input;
    m_plan.source = input.deviceDescription();
    if (!m_plan.driven) return true;
    if (const int code = input.Configure(); code != 0) {
        refuse(code);
        return false;
    }
    m_state.settings.sampling.NumChannels = static_cast<std::int16_t>(input.numChannels());
    return true;
}

bool RunController::askToResetChannels() {
    if (!m_plan.askToReset) return true;
    m_services.view.refresh();
    const MessageAnswer answer =
        m_services.messages.show({"Reset channels and press OK when ready to start collection.", "Reset Channels Now",
                                  MessageIcon::Question, MessageButtons::OkCancel});
    if (answer == MessageAnswer::Ok) return m_state.run.phase == RunPhase::Preparing; // else it was stopped meanwhile
    // What has been done so far stays done: the number stays advanced and Stop enabled.
    finish(RunOutcome::Stopped);
    m_state.run.stopEnabled = true;
    m_services.view.refresh();
    return false;
}

void RunController::start() {
    enter(m_plan.triggered() ? RunPhase::Waiting : RunPhase::Acquiring);
    m_services.view.refresh();
    const int run = m_run;
    if (givesPulses(m_plan.sampling)) m_services.view.paintNow(); // they block this thread
    if (run != m_run || !collecting(m_state.run.phase)) return;   // stopped while it was painted
    if (m_plan.toneBefore) playTone();
    m_services.clock.setStepped(true);
    m_services.clock.waitForNextMillisecond();
    const int code = m_plan.driven ? m_services.analogInput.Start() : 0;
    m_started = std::chrono::system_clock::now();
    if (code == 0)
        m_pulses =
            RunStimulusPulses(m_plan.sampling, m_services.clock, m_plan.driven ? &m_services.digitalOutput : nullptr);
    m_services.clock.setStepped(false);
    if (code != 0) refuse(code);
    if (!m_plan.driven) endWithoutBoard();
}

/// No data will come. A trial that is there stays whole; where there is none, the collection leaves one without
/// samples.
void RunController::endWithoutBoard() {
    if (!m_state.trials.CurrentTrial) m_state.trials.CurrentTrial = trialOf(nullptr, 0);
    finish(RunOutcome::NoBoard, "Debug mode: the board was not driven.");
    m_services.view.refresh();
}

void RunController::refuse(int code) {
    finish(RunOutcome::Refused);
    m_services.view.refresh();
    ShowDaqError(code);
}

void RunController::finish(RunOutcome outcome, std::string notice) {
    m_outcome = outcome;
    enter(RunPhase::Idle);
    m_state.run = {};
    m_state.notice = std::move(notice);
}

// Stopping ------------------------------------------------------------------------------------------------------------

void RunController::Stop() {
    if (m_state.run.asking) return;
    if (m_state.RealTimeMode()) {
        endRealTime();
        finish(RunOutcome::Stopped, "Stopped");
        m_services.view.refresh();
        return;
    }
    const Hold whileAsking(*this);
    if (confirmStop()) stopCollection();
}

/// Trials that were complete before the answer are kept: they have arrived and wait for the question to close.
void RunController::stopCollection() {
    const bool collected = collecting(m_state.run.phase);
    if (collected && m_plan.driven) m_services.analogInput.Stop();
    whenDelivered([this, run = m_run, collected] {
        if (run != m_run || collected != collecting(m_state.run.phase)) return; // the last one has ended it
        finish(RunOutcome::Stopped, "Stopped");
        m_services.view.RedrawTrials();
        m_services.view.refresh();
    });
}

/// Asks whether to lose the trial being taken.
bool RunController::confirmStop() {
    m_state.run.asking = true;
    m_services.view.refresh();
    const MessageAnswer answer =
        m_services.messages.show({"Press Yes to stop A/D collection.  Data from current trial will be lost.",
                                  "Stop Current Trial", MessageIcon::Question, MessageButtons::YesNo, true});
    m_state.run.asking = false;
    m_services.view.refresh();
    return answer == MessageAnswer::Yes;
}

// Real-time view ------------------------------------------------------------------------------------------------------

void RunController::mnuRealTime_Click() {
    if (busy() || m_state.RealTimeMode()) return;
    m_watchDriven = !m_state.flags.DebugMode;
    CWAI& input = m_services.analogInput;
    describeSampling(m_state.settings, input);
    const StartCondition confirmed = std::exchange(input.config.start, StartCondition{});
    input.config.end = EndCondition::Continuous;
    m_state.run = {};
    enter(RunPhase::RealTime);
    m_state.run.stopEnabled = true;
    if (m_watchDriven) ShowDaqError(input.Configure());

    SamplingSettings& sampling = m_state.settings.sampling;
    sampling.NumChannels = static_cast<std::int16_t>(input.numChannels());
    constexpr std::int64_t mostSamples = std::numeric_limits<std::int32_t>::max();
    sampling.NumSamples = static_cast<std::int32_t>(std::min(input.totalScans(), mostSamples));
    const std::int64_t scans = input.config.chunked ? input.config.chunkScans : input.config.totalScans;
    m_services.view.beginRealTime(static_cast<double>(scans - 1) / sampling.Rate);
    m_services.view.refresh();
    if (m_watchDriven) ShowDaqError(input.Start());
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
    if (!m_state.RealTimeMode()) return;
    if (m_watchDriven) m_services.analogInput.Stop();
    enter(RunPhase::Idle);
    m_state.run = {};
    m_services.view.endRealTime();
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
    RunStatus& status = m_state.run;
    if (status.phase != RunPhase::Waiting && status.phase != RunPhase::Acquiring) return;
    if (status.phase == RunPhase::Waiting && !progress.waitingForTrigger) enter(RunPhase::Acquiring);
    status.repeat = static_cast<double>(progress.count) / static_cast<double>(progress.totalScans);
    status.scans = progress.scansInBlock;
    status.scansOfTrial = progress.blockScans;
    m_services.view.refresh();
}

void RunController::takeBlock(const AnalogBlock& block) {
    RunStatus& status = m_state.run;
    if (status.phase == RunPhase::Waiting) enter(RunPhase::Acquiring);
    if (status.phase != RunPhase::Acquiring) return;
    const int k = static_cast<int>(std::floor(m_plan.randomRatio * m_services.random())) + 1;
    if (m_plan.toneAfter && k == 1) playTone();

    std::shared_ptr<Trial> trial = trialOf(block.samples, block.firstScan);
    if (m_plan.triggered()) {
        trial->record.trigger = m_plan.trigger;
        if (status.trialsTaken == 0) trial->record.triggerSample = m_plan.input.start.preTriggerScans;
    }
    takeTrial(std::move(trial));
    if (block.last)
        finish(RunOutcome::Completed, m_state.notice);
    else
        ++status.trialsTaken;
    handOn();
}

void RunController::takeError(const AnalogError& error) {
    if (m_state.run.phase == RunPhase::Idle) return;
    const bool watched = m_state.RealTimeMode();
    const bool keeps = !watched && error.arrived != nullptr;
    endRealTime();
    std::string context = error.context;
    if (keeps) {
        std::shared_ptr<Trial> part = trialOf(error.arrived, error.firstScan);
        part->name += "-partial";
        context += " The part of the trial that had arrived (" + std::to_string(error.arrived->samples()) +
                   " samples per channel) is kept as " + part->name + ".";
        takeTrial(std::move(part));
    }
    finish(RunOutcome::Failed, m_state.notice);
    if (!watched) m_services.view.RedrawTrials(); // what was watched last stays in sight
    m_services.view.refresh();
    m_services.messages.show({"Error: " + std::to_string(error.code) + lineBreak + "Context: " + context + lineBreak +
                                  m_services.analogInput.describe(error.code),
                              "Error", MessageIcon::None, MessageButtons::Ok});
}

/// A trial of the collection in progress: what the plan says, and what the next trial is to carry. `firstScan` is the
/// number of its first sample since the board was started.
std::shared_ptr<Trial> RunController::trialOf(const TrialData& samples, std::int64_t firstScan) const {
    const int repeat = m_state.run.trialsTaken;
    auto trial = std::make_shared<Trial>();
    trial->samples = samples;
    trial->name = m_plan.nameOf(repeat);
    trial->number = m_plan.number;
    trial->sampling = m_plan.sampling;
    trial->header = m_state.header;
    trial->header.Title = {}; // that of the trial before
    trial->infoA = m_state.infoA;
    trial->infoB = m_state.infoB;
    trial->comments = m_state.comments;
    trial->record.source = m_plan.source;
    if (!samples) return trial;
    trial->sampling.NumChannels = static_cast<std::int16_t>(samples->channels());
    trial->sampling.NumSamples = static_cast<std::int32_t>(samples->samples());
    const std::chrono::duration<double> intoRun(static_cast<double>(firstScan) / m_plan.input.scanRateHz);
    trial->record.start = isoTime(m_started + std::chrono::duration_cast<std::chrono::milliseconds>(intoRun));
    if (static_cast<std::size_t>(repeat) < m_pulses.size())
        trial->record.pulses = m_pulses[static_cast<std::size_t>(repeat)];
    return trial;
}

/// Makes a trial the current one.
void RunController::takeTrial(std::shared_ptr<Trial> trial) {
    m_state.notice = replacedUnsaved(m_state);
    m_state.settings.sampling.NumChannels = trial->sampling.NumChannels;
    m_state.settings.sampling.NumSamples = trial->sampling.NumSamples;
    m_state.trials.CurrentTrial = std::move(trial);
}

/// Shows the new current trial and saves it where the settings ask for that.
void RunController::handOn() {
    RunView& view = m_services.view;
    view.RedrawTrials();
    view.refresh();
    if (m_state.settings.setup.Comments) view.editComments();
    if (m_state.settings.setup.Autosave) m_services.sink.autosave(m_state.settings.setup.SaveType);
}

void RunController::playTone() {
    if (m_services.sound.deviceCount() > 0) m_services.sound.playFile(m_services.toneFile);
}

void RunController::ShowDaqError(int code) {
    if (code == 0) return;
    m_services.messages.show({"DAQ Error: " + std::to_string(code) + "\r" + m_services.analogInput.describe(code),
                              "Error", MessageIcon::None, MessageButtons::Ok});
}

} // namespace tavex2
