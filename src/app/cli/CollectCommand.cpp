#include "app/cli/CollectCommand.h"

#include "acquisition/AcqFields.h"
#include "acquisition/Protocol.h"
#include "acquisition/SetupFile.h"
#include "acquisition/Sound.h"
#include "app/Boards.h"
#include "app/RunParts.h"
#include "app/SettingsArguments.h"
#include "app/StartUp.h"
#include "app/cli/CollectChecks.h"
#include "app/cli/ConsoleRun.h"
#include "app/cli/PlotCommand.h"
#include "app/cli/TrialTexts.h"
#include "app/cli/TrialWriter.h"
#include "base/PathText.h"
#include "platform/Interruption.h"
#include "platform/QueueEventLoop.h"
#include "platform/SteadyClock.h"
#include "platform/VirtualClock.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <memory>
#include <random>
#include <system_error>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

Result<void> checkPicture(const std::optional<fs::path>& picture) {
    if (!picture) return {};
    if (auto named = checkPictureName(*picture); !named) return named;
    const fs::path folder = picture->has_parent_path() ? picture->parent_path() : fs::path(".");
    std::error_code ignored;
    if (fs::is_directory(folder, ignored)) return {};
    return Error{ErrorKind::NotFound,
                 "The picture's folder " + pathText(folder) + " does not exist. Create it or choose another one."};
}

/// What was asked for, each once; without any, what the settings say.
std::vector<const TrialFormat*> formatsOf(const CollectRequest& request, const SetupOptions& setup) {
    std::vector<const TrialFormat*> formats;
    for (const std::string& name : request.formats) {
        const TrialFormat* format = trialFormat("." + name);
        if (std::ranges::find(formats, format) == formats.end()) formats.push_back(format);
    }
    if (formats.empty()) formats.push_back(trialFormat(setup.SaveType == 1 ? ".tab" : ".lmb"));
    return formats;
}

/// The state of a collection that nobody watches: every trial is saved as it arrives, nothing is asked.
Result<void> prepareState(ProgramState& state, const CollectRequest& request, std::ostream& err) {
    AcqSettings& settings = state.settings;
    settings.sound = defaultTone();
    if (request.setup) {
        if (auto read = readSetupFile(*request.setup, settings); !read) return read;
        if (const auto own = readOwnSettings(*request.setup, ownSettings(state)); !own)
            err << "tavex2: " << oneLine(own.error().text) << '\n';
    }
    if (auto set = applySettings(state, request.settings); !set)
        return Error{set.error().kind == ErrorKind::NotFound ? ErrorKind::WrongUsage : set.error().kind,
                     set.error().text};
    settings.setup.Autosave = true;
    settings.setup.Comments = false;
    settings.setup.PauseToReset = false;
    if (auto entered = enterTexts(state, request.texts); !entered) return entered;
    if (auto usable = checkCollectable(settings, settings.setup.TriggerMode == 1); !usable) return usable;
    return checkPicture(request.plot);
}

/// Runs one collection to its end, or until the user interrupts the program.
void collectOne(RunController& run, QueueEventLoop& events) {
    constexpr std::chrono::milliseconds betweenLooks{50};
    run.Collect();
    while (!events.runUntil([&run] { return !run.busy() || Interruption::requested(); }, betweenLooks) || run.busy())
        if (Interruption::requested()) run.Stop();
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

/// The part that needs the board and its time.
class Collection {
  public:
    Collection(const CollectRequest& request, const CommandLineServices& services, ProgramState& state)
        : m_request(request), m_services(services), m_state(state) {
        m_virtualClock.setFreeRunning(true);
    }

    /// Gives the exit code.
    int run() {
        const Result<OpenBoards> boards = openBoards(m_request.board, m_services.store, clock());
        if (!boards) return fail(boards.error());
        SetupOptions& setup = m_state.settings.setup;
        setup.Device = boards.value().device.value_or(setup.Device);
        const std::vector<const TrialFormat*> formats = formatsOf(m_request, setup);
        if (const auto ready = checkPlace({.settings = m_state.settings,
                                           .trials = m_request.trials,
                                           .folder = m_request.folder,
                                           .formats = formats});
            !ready)
            return fail(ready.error());

        const Interruption interruption;
        QueueEventLoop events(clock());
        ConsoleMessages messages;
        SilentRunView view;
        TrialWriter writer(m_state, m_request.folder, formats, m_request.json ? nullptr : &m_services.out);
        RunTone tone(m_state.settings.sound, m_request.fast, m_services);
        RunParts parts(m_state, {.boards = boards.value().list,
                                 .events = events,
                                 .clock = clock(),
                                 .messages = messages,
                                 .sound = tone.sound(),
                                 .view = view,
                                 .sink = writer,
                                 .toneFile = tone.file()});
        parts.confirmSettings();
        collectAll(parts.run, events, messages, writer);
        drawLast();
        if (m_request.json)
            m_services.out << Json{{"Board", parts.analogInput.deviceDescription()}, {"Trials", writer.trials()}}.dump(
                                  2, ' ', false, Json::error_handler_t::replace)
                           << '\n';
        for (const std::string& problem : m_problems)
            m_services.err << "tavex2: " << oneLine(problem) << '\n';
        return m_problems.empty() ? exitDone : exitFailed;
    }

    int fail(const Error& error) const {
        m_services.err << "tavex2: " << oneLine(error.text) << '\n';
        return error.kind == ErrorKind::WrongUsage ? exitWrongUsage : exitFailed;
    }

  private:
    MillisecondClock& clock() {
        return m_request.fast ? static_cast<MillisecondClock&>(m_virtualClock) : m_steadyClock;
    }

    void collectAll(RunController& run, QueueEventLoop& events, ConsoleMessages& messages, TrialWriter& writer) {
        for (int trial = 0; trial < m_request.trials && m_problems.empty(); ++trial) {
            collectOne(run, events);
            m_problems = messages.takeProblems();
            if (Interruption::requested())
                m_problems.emplace_back("Interrupted; the trial that was being taken is lost.");
            // A board that failed leaves the part of a trial that had arrived.
            if (m_state.TrialNotSaved() && hasCurrentTrial(m_state)) writer.autosave(0);
            m_problems.insert(m_problems.end(), writer.problems().begin(), writer.problems().end());
        }
    }

    void drawLast() {
        if (!m_problems.empty() || !m_request.plot) return;
        const Trial& last = *m_state.trials.CurrentTrial;
        if (const auto drawn = m_services.drawPicture(pictureOf(last, last.name, *m_request.plot)); !drawn)
            m_problems.push_back(drawn.error().text);
    }

    const CollectRequest& m_request;
    const CommandLineServices& m_services;
    ProgramState& m_state;
    SteadyClock m_steadyClock;
    VirtualClock m_virtualClock;
    std::vector<std::string> m_problems;
};

} // namespace

int collectTrials(const CollectRequest& request, const CommandLineServices& services) {
    ProgramState state;
    const Result<void> ready = prepareState(state, request, services.err);
    Collection collection(request, services, state);
    return ready ? collection.run() : collection.fail(ready.error());
}

} // namespace tavex2
