#include "platform/AnalogInput.h"

#include "base/Decimal.h"
#include "platform/AcquisitionLoop.h"
#include "platform/ChannelList.h"
#include "platform/SystemMemory.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <system_error>
#include <utility>

namespace tavex2 {

/// Posted events reach the control through this, so that an event of an earlier run, or one that outlived the control,
/// finds that it is void. The number and the control are touched on the user-interface thread only.
struct AnalogInput::Link {
    AnalogInput* control = nullptr;
    int run = 0;

    bool valid(int ofRun) const { return control != nullptr && run == ofRun; }
};

namespace {

DaqOutcome refused(DaqStatus status, std::string detail) {
    return {status, std::move(detail)};
}

std::string between(double lowest, double highest, const char* unit) {
    return plainNumber(lowest) + " to " + plainNumber(highest) + " " + unit;
}

/// Scans of one delivered block.
std::int64_t blockScans(const AnalogInputConfig& config) {
    return config.chunked ? config.chunkScans : config.totalScans;
}

int blocks(const AnalogInputConfig& config) {
    return static_cast<int>(config.totalScans / blockScans(config));
}

/// For a channel whose board is looked at elsewhere.
constexpr int anyInput = std::numeric_limits<int>::max();

DaqOutcome checkRate(const AnalogInputConfig& config, const BoardDescription& description) {
    if (config.scanRateHz >= description.lowestRateHz && config.scanRateHz <= description.highestRateHz) return {};
    return refused(DaqStatus::BadRate, description.name + " samples at " +
                                           (description.lowestRateHz == description.highestRateHz
                                                ? plainNumber(description.highestRateHz) + " Hz"
                                                : between(description.lowestRateHz, description.highestRateHz, "Hz")) +
                                           "; the rate is set to " + plainNumber(config.scanRateHz) + " Hz.");
}

DaqOutcome checkCounts(const AnalogInputConfig& config) {
    constexpr std::int64_t mostSamples = std::numeric_limits<std::int32_t>::max();
    const std::int64_t scans = blockScans(config);
    if (scans < 1 || config.totalScans < 1)
        return refused(DaqStatus::BadScanCount, "Duration x rate x repeats gives no scans.");
    if (scans > mostSamples)
        return refused(DaqStatus::BadScanCount, "A trial holds at most " + std::to_string(mostSamples) +
                                                    " samples per channel; these settings ask for " +
                                                    std::to_string(scans) + ".");
    if (config.totalScans % scans != 0)
        return refused(DaqStatus::BadScanCount, "The scans of all repeats are not a multiple of one trial's.");
    return {};
}

DaqOutcome checkLimits(const AnalogInputConfig& config, const BoardDescription& description) {
    const bool inRange = config.lowerVolts >= description.lowestVolts && config.upperVolts <= description.highestVolts;
    if (inRange && config.lowerVolts < config.upperVolts) return {};
    return refused(DaqStatus::BadLimits, "They are set to " + plainNumber(config.lowerVolts) + " and " +
                                             plainNumber(config.upperVolts) + " V; the board's range is " +
                                             between(description.lowestVolts, description.highestVolts, "V") + ".");
}

DaqOutcome checkTrigger(const AnalogInputConfig& config, const std::vector<int>& channels) {
    const StartCondition& start = config.start;
    if (start.type == StartCondition::Type::None || config.end == EndCondition::Continuous) return {};
    const Result<std::vector<int>> source = parseChannelList(start.channel, anyInput);
    const bool listed =
        source && source.value().size() == 1 && std::ranges::find(channels, source.value().front()) != channels.end();
    if (!listed)
        return refused(DaqStatus::BadTrigger, "The trigger channel \"" + start.channel +
                                                  "\" is not among the listed channels " + config.channelList + ".");
    if (!std::isfinite(start.levelVolts) || !std::isfinite(start.secondThresholdVolts))
        return refused(DaqStatus::BadTrigger, "The trigger level is no number.");
    if (start.preTriggerScans < 0 || start.preTriggerScans >= blockScans(config))
        return refused(DaqStatus::BadTrigger, "The pre-trigger must be shorter than the trial.");
    return {};
}

DaqOutcome checkMemory(const AnalogInputConfig& config, std::size_t channels) {
    const double bytes =
        static_cast<double>(blockScans(config)) * static_cast<double>(channels) * static_cast<double>(sizeof(double));
    const auto available = static_cast<double>(physicalMemoryBytes());
    if (bytes < available) return {};
    constexpr double gibibyte = 1024.0 * 1024.0 * 1024.0;
    return refused(DaqStatus::OutOfMemory, "It needs " + plainNumber(std::ceil(bytes / gibibyte)) +
                                               " GiB, the machine has " +
                                               plainNumber(std::floor(available / gibibyte)) + " GiB.");
}

} // namespace

AnalogInput::AnalogInput(const BoardList& boards, EventLoop& events)
    : m_boards(boards), m_events(events), m_link(std::make_shared<Link>()) {
    m_link->control = this;
}

AnalogInput::~AnalogInput() {
    Stop();
    m_link->control = nullptr;
}

void AnalogInput::selectDevice(int number) {
    if (number == m_device) return;
    Stop();
    m_device = number;
    m_applied.reset();
}

std::string AnalogInput::deviceDescription() const {
    const Board* selected = board();
    return "Device: " + (selected != nullptr ? selected->description().name : "none");
}

// Configuration -------------------------------------------------------------------------------------------------------

int AnalogInput::Configure() {
    if (m_running) return refuse(DaqStatus::Busy, "");
    m_applied.reset();
    const DaqOutcome outcome = check(config, m_stream);
    if (!outcome.ok()) return refuse(outcome.status, outcome.detail);
    m_applied = config;
    return 0;
}

int AnalogInput::refuse(DaqStatus status, std::string detail) {
    m_failedCode = static_cast<int>(status);
    m_failedDetail = std::move(detail);
    return m_failedCode;
}

std::string AnalogInput::describe(int code) const {
    std::string text(daqStatusDescription(code));
    if (code == m_failedCode && !m_failedDetail.empty()) text += " " + m_failedDetail;
    return text;
}

std::string AnalogInput::refusalOf(const AnalogInputConfig& asked) const {
    StreamConfig stream;
    const DaqOutcome outcome = check(asked, stream);
    if (outcome.ok()) return {};
    return outcome.detail.empty() ? std::string(daqStatusDescription(static_cast<int>(outcome.status)))
                                  : outcome.detail;
}

/// What the board and the machine say to a configuration, which is made into `stream`.
DaqOutcome AnalogInput::check(const AnalogInputConfig& asked, StreamConfig& stream) const {
    const Board* selected = board();
    if (selected == nullptr)
        return refused(DaqStatus::NoDevice, m_boards.count() == 0 ? "No board was found."
                                                                  : "The boards found have the numbers 1 to " +
                                                                        std::to_string(m_boards.count()) + ", not " +
                                                                        std::to_string(m_device) + ".");
    const BoardDescription& description = selected->description();

    Result<std::vector<int>> channels = parseChannelList(asked.channelList, description.inputs);
    if (!channels) return refused(DaqStatus::BadChannelList, channels.error().text);
    stream = {.channels = std::move(channels).value(),
              .rateHz = asked.scanRateHz,
              .lowerVolts = asked.lowerVolts,
              .upperVolts = asked.upperVolts};

    for (const DaqOutcome& outcome :
         {checkRate(asked, description), checkCounts(asked), checkLimits(asked, description),
          checkTrigger(asked, stream.channels), checkMemory(asked, stream.channels.size())})
        if (!outcome.ok()) return outcome;
    return selected->check(stream);
}

// Running -------------------------------------------------------------------------------------------------------------

int AnalogInput::Start() {
    Board* selected = board();
    if (m_running) return refuse(DaqStatus::Busy, "");
    if (!m_applied || selected == nullptr) return refuse(DaqStatus::NotConfigured, "");
    if (m_thread.joinable()) m_thread.join(); // a run that has delivered everything is about to end

    std::function<void(std::stop_token)> acquisition;
    if (const DaqOutcome prepared = prepare(*selected, acquisition); !prepared.ok())
        return refuse(prepared.status, prepared.detail);
    if (const DaqOutcome started = selected->start(m_stream); !started.ok())
        return refuse(started.status, started.detail);
    try {
        m_thread = std::jthread(std::move(acquisition));
    } catch (const std::system_error& problem) {
        selected->stop();
        return refuse(DaqStatus::DeviceUnavailable, std::string("The system gave no thread: ") + problem.what() + ".");
    }
    m_running = true;
    return 0;
}

/// Reserves the memory of a run and makes what the acquisition thread is to do.
DaqOutcome AnalogInput::prepare(Board& selected, std::function<void(std::stop_token)>& acquisition) {
    const AnalogInputConfig& applied = *m_applied;
    const VoltageLimits limits = selected.description().appliesLimits
                                     ? VoltageLimits{}
                                     : VoltageLimits{.lower = applied.lowerVolts, .upper = applied.upperVolts};
    if (applied.end == EndCondition::Continuous) {
        Result<LatestWindow> window = LatestWindow::create(numChannels(), blockScans(applied), limits);
        if (!window) return {DaqStatus::OutOfMemory, window.error().text};
        acquisition = [&selected, stream = m_stream, events = eventsOfNextView(),
                       latest =
                           std::make_shared<LatestWindow>(std::move(window).value())](const std::stop_token& stop) {
            acquireContinuously(selected, *latest, stream, events, stop);
        };
        return {};
    }
    Result<ScanAssembler> trials = ScanAssembler::create({.channels = numChannels(),
                                                          .blockScans = blockScans(applied),
                                                          .blocks = blocks(applied),
                                                          .limits = limits,
                                                          .trigger = levelTrigger()});
    if (!trials) return {DaqStatus::OutOfMemory, trials.error().text};
    acquisition = [&selected, applied, stream = m_stream, events = eventsOfNextRun(),
                   assembler =
                       std::make_shared<ScanAssembler>(std::move(trials).value())](const std::stop_token& stop) {
        acquireTrials(selected, *assembler, applied, stream, events, stop);
    };
    return {};
}

std::optional<LevelTrigger> AnalogInput::levelTrigger() const {
    const StartCondition& start = m_applied->start;
    if (start.type == StartCondition::Type::None) return std::nullopt;
    const int source = parseChannelList(start.channel, anyInput).value().front();
    const auto column = std::ranges::find(m_stream.channels, source) - m_stream.channels.begin();
    return levelTriggerFor(start, static_cast<int>(column));
}

/// What the acquisition thread calls: each hands its event over to the user-interface thread, under the run's number.
AcquisitionEvents AnalogInput::eventsOfNextRun() {
    const int run = ++m_link->run;
    const std::shared_ptr<Link> link = m_link;
    EventLoop& loop = m_events;
    return {.data =
                [&loop, link, run](AnalogBlock block) {
                    loop.post([link, run, delivered = std::move(block)] {
                        if (!link->valid(run)) return;
                        AnalogInput& control = *link->control;
                        if (delivered.last) control.m_running = false;
                        if (control.onData) control.onData(delivered);
                    });
                },
            .progress =
                [&loop, link, run](AnalogProgress progress) {
                    loop.post([link, run, progress] {
                        if (link->valid(run) && link->control->onProgress) link->control->onProgress(progress);
                    });
                },
            .error =
                [&loop, link, run](AnalogError error) {
                    loop.post([link, run, failed = std::move(error)] {
                        if (!link->valid(run)) return;
                        link->control->m_running = false;
                        if (link->control->onError) link->control->onError(failed);
                    });
                }};
}

/// The same for watching, where only the newest scans count: a block that the user-interface thread has not yet taken
/// is replaced, so that a busy window shows what is now and not what was when it became busy.
AcquisitionEvents AnalogInput::eventsOfNextView() {
    struct Newest {
        std::mutex mutex;
        std::optional<AnalogBlock> block;
    };
    AcquisitionEvents events = eventsOfNextRun();
    events.data = [&loop = m_events, link = m_link, run = m_link->run,
                   newest = std::make_shared<Newest>()](AnalogBlock block) {
        const std::lock_guard lock(newest->mutex);
        if (!std::exchange(newest->block, std::move(block))) // else the event for it is on its way already
            loop.post([link, run, newest] {
                std::unique_lock taking(newest->mutex);
                const std::optional<AnalogBlock> taken = std::exchange(newest->block, std::nullopt);
                taking.unlock();
                if (link->valid(run) && link->control->onData) link->control->onData(*taken);
            });
    };
    return events;
}

void AnalogInput::Stop() {
    ++m_link->run; // what is still on its way is void
    m_running = false;
    if (!m_thread.joinable()) return;
    m_thread.request_stop();
    if (Board* selected = board()) selected->stop();
    m_thread.join();
}

} // namespace tavex2
