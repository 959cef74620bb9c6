#include "app/cli/CollectCommand.h"

#include "acquisition/AcqFields.h"
#include "acquisition/RunController.h"
#include "acquisition/SetupFile.h"
#include "acquisition/Sound.h"
#include "acquisition/StartCondition.h"
#include "app/Boards.h"
#include "app/SettingsArguments.h"
#include "app/StartUp.h"
#include "app/cli/ConsoleRun.h"
#include "app/cli/PlotCommand.h"
#include "base/PathText.h"
#include "files/FileIO.h"
#include "files/FreeName.h"
#include "files/LmbLayout.h"
#include "files/StimulusFile.h"
#include "files/TextExport.h"
#include "platform/AnalogInput.h"
#include "platform/ChannelList.h"
#include "platform/DigitalOutput.h"
#include "platform/QueueEventLoop.h"
#include "platform/SoundOutput.h"
#include "platform/SteadyClock.h"
#include "platform/VirtualClock.h"

#include <nlohmann/json.hpp>

#include <atomic>
#include <chrono>
#include <csignal>
#include <fstream>
#include <memory>
#include <random>
#include <system_error>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

std::atomic<bool> interrupted{false};

/// Turns an interrupt (Ctrl+C) into a flag for as long as it lives. The stimuli of many repeats cannot be broken off
/// between two events, so a second interrupt ends the program at once.
class InterruptGuard {
  public:
    InterruptGuard()
        : m_before(std::signal(SIGINT, [](int) {
              interrupted = true;
              std::signal(SIGINT, SIG_DFL);
          })) {
        interrupted = false;
    }
    ~InterruptGuard() { std::signal(SIGINT, m_before); }
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;

  private:
    void (*m_before)(int);
};

/// Saves each trial as it arrives and remembers what was written.
class SavingSink final : public TrialSink {
  public:
    /// `formats` are extensions without their dot; none stands for the binary trial file.
    SavingSink(ProgramState& state, fs::path folder, std::vector<std::string> formats)
        : m_state(state), m_folder(std::move(folder)), m_formats(std::move(formats)) {
        if (m_formats.empty()) m_formats.emplace_back("lmb");
    }

    Json trials = Json::array();
    std::string text;
    std::vector<std::string> problems;

    void autosave(int) override { save(); }

    void save() {
        if (!problems.empty()) return; // one reason is enough, and later trials would meet it too
        Json files = Json::array();
        const Trial& trial = *m_state.trials.CurrentTrial;
        const SamplingSettings& taken = trial.sampling;
        for (const std::string& format : m_formats) {
            const Result<fs::path> written = write(format, trial);
            if (!written) {
                problems.push_back(oneLine(written.error().text));
                return;
            }
            files.push_back(pathText(written.value()));
            text += pathText(written.value()) + ": " + std::to_string(taken.NumChannels) + " channels x " +
                    std::to_string(taken.NumSamples) + " samples at " + std::to_string(taken.Rate) + " Hz\n";
        }
        trials.push_back({{"TrialName", trial.name},
                          {"File", files.front()},
                          {"NumChannels", taken.NumChannels},
                          {"NumSamples", taken.NumSamples},
                          {"Rate", taken.Rate},
                          {"Duration", taken.Duration}});
        if (files.size() > 1) trials.back()["Files"] = files;
        m_state.changeCurrent([](Trial& saved) { saved.Unsaved = saved.TrialNotSaved = false; });
    }

  private:
    Result<fs::path> write(const std::string& format, const Trial& trial) {
        if (format == "lmb") {
            const auto written = WriteLmbToFreeName(m_folder, trial, lmbTitle(trial.number, localTimeNow()));
            return written ? Result<fs::path>(written.value().path) : written.error();
        }
        return writeToFreeName(m_folder, trial.name, "." + format, [&](const fs::path& path) {
            if (format == "tab") return WriteTab(path, trial, {IfExists::Refuse, {}});
            if (format == "lma") return WriteLma(path, trial, {IfExists::Refuse, {}});
            return WritePlv(path, trial, {IfExists::Refuse, {}});
        });
    }

    ProgramState& m_state;
    fs::path m_folder;
    std::vector<std::string> m_formats;
};

/// Finds out before the subject has made an effort whether the trials will have a place to go.
Result<void> checkFolder(const fs::path& folder, std::uintmax_t bytesNeeded) {
    std::error_code problem;
    const std::string name = "The output folder " + folder.string();
    if (!fs::exists(folder, problem))
        return Error{ErrorKind::NotFound, name + " does not exist. Create it or choose another one."};
    if (!fs::is_directory(folder, problem))
        return Error{ErrorKind::InvalidValue, name + " is not a folder. Choose another one."};
    const fs::path probe = folder / ".tavex2-write-probe";
    const bool writable = std::ofstream(probe).put(' ').flush().good();
    fs::remove(probe, problem);
    const std::uintmax_t available = fs::space(folder, problem).available;
    if (!problem && available < bytesNeeded)
        return Error{ErrorKind::WriteFailed, name + " has room for " + std::to_string(available / 1024) +
                                                 " KiB but the trials need " + std::to_string(bytesNeeded / 1024 + 1) +
                                                 " KiB. Make room or choose another one."};
    if (!writable)
        return Error{ErrorKind::WriteFailed,
                     name + " cannot be written to. Choose another one or change its permissions."};
    return {};
}

Result<void> checkPicture(const std::optional<fs::path>& picture) {
    if (!picture) return {};
    const fs::path folder = picture->has_parent_path() ? picture->parent_path() : fs::path(".");
    std::error_code ignored;
    if (fs::is_directory(folder, ignored)) return {};
    return Error{ErrorKind::NotFound,
                 "The picture's folder " + folder.string() + " does not exist. Create it or choose another one."};
}

/// What the trials will need on the disk; 0 when the channel list says nothing sensible, which the board will refuse.
std::uintmax_t bytesOfTrials(const AcqSettings& settings, int trials) {
    const Result<std::vector<int>> channels = parseChannelList(settings.sampling.Channels.trimmed(), mostChannels);
    if (!channels) return 0;
    const auto bytes = lmbFileBytes(static_cast<int>(channels.value().size()), samplesPerTrial(settings.sampling));
    return bytes ? bytes.value() * static_cast<std::uintmax_t>(trials) *
                       static_cast<std::uintmax_t>(settings.sampling.Repeat)
                 : 0;
}

/// The settings of a collection that nobody watches: every trial is saved as it arrives, nothing is asked.
Result<void> prepareSettings(ProgramState& state, const std::vector<std::string>& arguments) {
    AcqSettings& settings = state.settings;
    if (auto set = applySettings(settings, arguments); !set) return set;
    settings.setup.Autosave = true;
    settings.setup.Comments = false;
    settings.setup.PauseToReset = false;
    state.flags.TriggerEnabled = settings.setup.TriggerMode == 1;
    return checkCollectable(settings, state.flags.TriggerEnabled);
}

/// Runs one collection to its end, or until the user interrupts the program.
void collectOne(RunController& run, QueueEventLoop& events) {
    constexpr std::chrono::milliseconds betweenLooks{100};
    run.Collect();
    while (!events.runUntil([&run] { return !run.busy(); }, betweenLooks))
        if (interrupted) run.Stop();
}

/// The tone of a run, in a file of its own as long as it lives, and what plays it. Silent when no tone is asked for.
class RunTone {
  public:
    RunTone(const SoundSettings& settings, bool fast, const CommandLineServices& services) {
        if (fast || !(settings.SoundBefore || settings.SoundAfter)) return;
        m_sound = services.openSound();
        if (m_sound->deviceCount() == 0) {
            services.err << "tavex2: This machine has no sound output; the tone is not played.\n";
            return;
        }
        std::error_code ignored;
        m_file = fs::temp_directory_path(ignored) / ("tavex2-tone-" + std::to_string(std::random_device{}()) + ".wav");
        if (const auto written = WriteTone(m_file, settings.SoundFreq, settings.SoundDuration); !written)
            services.err << "tavex2: " << oneLine(written.error().text) << '\n';
        constexpr double millisecondsPerSecond = 1000;
        constexpr std::chrono::seconds opening{2};
        m_longest = opening + std::chrono::milliseconds(
                                  static_cast<std::int64_t>(settings.SoundDuration * millisecondsPerSecond));
    }
    /// Lets the tone sound to its end.
    ~RunTone() {
        m_sound->finishPlaying(m_longest);
        std::error_code ignored;
        if (!m_file.empty()) fs::remove(m_file, ignored);
    }
    RunTone(const RunTone&) = delete;
    RunTone& operator=(const RunTone&) = delete;

    SoundOutput& sound() { return *m_sound; }
    const fs::path& file() const { return m_file; }

  private:
    std::unique_ptr<SoundOutput> m_sound = std::make_unique<NoSound>();
    fs::path m_file;
    std::chrono::milliseconds m_longest{0};
};

} // namespace

int collectTrials(const CollectRequest& request, const CommandLineServices& services) {
    const auto fail = [&services](const std::string& problem) {
        services.err << "tavex2: " << oneLine(problem) << '\n';
        return exitFailed;
    };
    ProgramState state;
    SoundSettings& tone = state.settings.sound;
    tone = defaultTone();
    if (request.setup)
        if (const auto read = readSetupFile(*request.setup, state.settings); !read) return fail(read.error().text);
    if (const auto ready = prepareSettings(state, request.settings); !ready) {
        fail(ready.error().text);
        return ready.error().kind == ErrorKind::NotFound ? exitWrongUsage : exitFailed; // no such setting
    }
    if (const auto ready = checkPicture(request.plot); !ready) return fail(ready.error().text);

    SteadyClock steadyClock;
    VirtualClock virtualClock;
    virtualClock.setFreeRunning(true);
    MillisecondClock& clock = request.fast ? static_cast<MillisecondClock&>(virtualClock) : steadyClock;
    const Result<OpenBoards> boards = openBoards(request.board, services.store, clock);
    if (!boards) return fail(boards.error().text);
    SetupOptions& setup = state.settings.setup;
    setup.Device = boards.value().device.value_or(setup.Device);
    QueueEventLoop events(clock);
    AnalogInput input(boards.value().list, events);
    DigitalOutput digitalOutput(input);
    input.selectDevice(setup.Device);
    input.config.start = startConditionFor(state.settings, state.flags.TriggerEnabled);
    if (const auto ready = checkFolder(request.folder, bytesOfTrials(state.settings, request.trials)); !ready)
        return fail(ready.error().text);

    SavingSink sink(state, request.folder, request.formats);
    ConsoleMessages messages;
    SilentRunView view;
    RunTone runTone(tone, request.fast, services);
    std::mt19937 generator{std::random_device{}()};
    RunController run(state, {.analogInput = input,
                              .digitalOutput = digitalOutput,
                              .clock = clock,
                              .events = events,
                              .messages = messages,
                              .sound = runTone.sound(),
                              .view = view,
                              .sink = sink,
                              .random = [&] { return std::uniform_real_distribution<double>(0.0, 1.0)(generator); },
                              .toneFile = runTone.file()});
    const InterruptGuard guard;
    std::vector<std::string> problems;
    for (int trial = 0; trial < request.trials && problems.empty(); ++trial) {
        collectOne(run, events);
        problems = messages.takeProblems();
        if (interrupted) problems.emplace_back("Interrupted; the trial that was being taken is lost.");
        // A board that failed leaves the part of a trial that had arrived.
        if (state.TrialNotSaved() && hasCurrentTrial(state)) sink.save();
        problems.insert(problems.end(), sink.problems.begin(), sink.problems.end());
    }
    const TrialPtr& last = state.trials.CurrentTrial;
    if (problems.empty() && request.plot)
        if (const auto drawn = services.drawPicture(pictureOf(*last, last->name, *request.plot)); !drawn) problems.push_back(drawn.error().text);

    if (request.json)
        services.out << Json{{"Board", input.deviceDescription()}, {"Trials", sink.trials}}.dump(
                            2, ' ', false, Json::error_handler_t::replace)
                     << '\n';
    else
        services.out << sink.text;
    for (const std::string& problem : problems)
        fail(problem);
    return problems.empty() ? exitDone : exitFailed;
}

} // namespace tavex2
