#include "app/ui/WindowProgram.h"

#include "acquisition/SetupCommands.h"
#include "app/Exit.h"
#include "app/RunParts.h"
#include "app/SettingsArguments.h"
#include "app/StartUp.h"
#include "app/StoredSettings.h"
#include "app/SystemInformation.h"
#include "app/SystemInformationViewer.h"
#include "app/ui/frmMain.h"
#include "base/PathText.h"
#include "files/ExportCommands.h"
#include "files/LmbLayout.h"
#include "files/SaveCommands.h"
#include "help/HelpCommands.h"
#include "help/ui/HelpKeys.h"
#include "help/ui/HelpWindow.h"
#include "platform/BoardList.h"
#include "platform/Environment.h"
#include "platform/SoundOutput.h"
#include "platform/SteadyClock.h"
#include "platform/SystemShell.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtFileDialogs.h"
#include "platform/qt/QtMessages.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTimer>

#include <filesystem>
#include <optional>
#include <vector>

namespace tavex2 {

namespace {

std::filesystem::path programFolder() {
    return pathFromText(QCoreApplication::applicationDirPath().toStdString());
}

std::filesystem::path userFolder() {
    return pathFromText(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation).toStdString());
}

/// Autosave through the save command or the tab-delimited export.
class AutosaveSink final : public TrialSink {
  public:
    AutosaveSink(SaveCommands& save, ExportCommands& exports) : m_save(save), m_exports(exports) {}
    void autosave(int saveType) override {
        if (saveType == 1)
            m_exports.autosaveTab();
        else
            m_save.autosave();
    }

  private:
    SaveCommands& m_save;
    ExportCommands& m_exports;
};

} // namespace

/// Everything that the program is made of, in the order in which one part needs the other.
struct WindowProgram::Parts {
    Parts(SettingsStore& settingsStore, SoundOutput& soundOutput) : store(settingsStore), sound(soundOutput) {}

    SettingsStore& store;
    SoundOutput& sound;
    SteadyClock clock;
    ProgramState state;
    QtEventLoop events;
    BoardList boards;
    frmMain window{state};
    QtMessages messages{&window};
    QtFileDialogs dialogs{&window};
    SaveCommands save{state, dialogs, messages, window};
    ExportCommands exports{state, dialogs, messages, window};
    StimulusCommands stimulusFiles{state, dialogs, messages, window, [this] { return save.mnuSave_Click(); }};
    OpenCommands open{state, dialogs, messages, window, [this] { return save.mnuSave_Click(); }};
    std::unique_ptr<Shell> systemsShell = systemShell();
    Shell& shell = *systemsShell;
    OutsidePrograms programs{state, {.store = store, .messages = messages, .dialogs = dialogs, .shell = shell}};
    AboutCommands about{store, messages, shell, [] { QCoreApplication::exit(); }}; // which asks nothing
    SystemInformationViewer systemViewer{systemRegistry(), shell, messages};
    HelpWindow helpWindow;
    HelpCommands help{helpFolder(programFolder()), helpWindow, messages};
    HelpKeys helpKeys{help};
    TrialSetCommands trialSets{
        state, messages, {.refresh = [this] { window.refresh(); }, .RedrawTrials = [this] { window.RedrawTrials(); }}};
    AutosaveSink sink{save, exports};
    std::filesystem::path toneFile = toneFileIn(programFolder(), userFolder());
    RunParts runParts{state,
                      {.boards = boards,
                       .events = events,
                       .clock = clock,
                       .messages = messages,
                       .sound = sound,
                       .view = window,
                       .sink = sink,
                       .toneFile = toneFile}};
    SetupCommands setup{state, runParts.analogInput, dialogs, messages, window};
    StartUpResult startUpResult;
    bool firstStart = false;                  ///< this user has never left the program, and asked for no board
    std::vector<std::filesystem::path> files; ///< to be opened when the window is shown

    std::string systemInformation() const {
        SystemFacts facts{.operatingSystem = QSysInfo::prettyProductName().toStdString(),
                          .toolkit = std::string("Qt ") + qVersion(),
                          .boards = {},
                          .settingsFile = store.location(stored::dataDir.application)};
        for (int device = 1; device <= boards.count(); ++device)
            facts.boards.push_back(boards.find(device)->description().name);
        return tavex2::systemInformation(facts);
    }

    static TrialStorage storage() {
        return {.fileBytes = [](int channels, std::int64_t samples) -> std::optional<std::uint64_t> {
                    const Result<std::uint64_t> bytes = lmbFileBytes(channels, samples);
                    return bytes ? std::optional(bytes.value()) : std::nullopt;
                },
                .freeBytes = [](const std::filesystem::path& folder) -> std::optional<std::uint64_t> {
                    std::error_code problem;
                    const auto space = std::filesystem::space(folder, problem);
                    return problem ? std::nullopt : std::optional<std::uint64_t>(space.available);
                }};
    }
};

WindowProgram::WindowProgram(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}

WindowProgram::~WindowProgram() = default;

Result<std::unique_ptr<WindowProgram>> WindowProgram::create(const WindowRequest& request, SettingsStore& store,
                                                             SoundOutput& sound) {
    auto made = std::make_unique<Parts>(store, sound);
    Parts& parts = *made;
    parts.files = request.files;
    parts.firstStart = !request.board && readText(store, stored::programDir, "").empty();
    // Paths on the command line are meant from the folder in which the program was started, which start-up leaves.
    AcqSettings& settings = parts.state.settings;
    Result<OpenBoards> boards = openBoards(request.board, store, parts.clock);
    if (!boards) return boards.error();
    parts.boards = std::move(boards.value().list);

    parts.runParts.analogInput.selectDevice(settings.setup.Device);
    parts.startUpResult = startUp(parts.state, {.store = store,
                                                .sound = parts.sound,
                                                .digitalOutput = parts.runParts.digitalOutput,
                                                .programFolder = programFolder(),
                                                .toneFile = parts.toneFile,
                                                .environment = environmentValue});
    if (const Result<void> set = applySettings(parts.state, request.settings); !set) return set.error();
    settings.setup.Device = boards.value().device.value_or(settings.setup.Device);
    parts.runParts.confirmSettings();

    parts.window.connectCommands(
        {.run = parts.runParts.run,
         .open = parts.open,
         .save = parts.save,
         .exports = parts.exports,
         .trialSets = parts.trialSets,
         .stimulusFiles = parts.stimulusFiles,
         .setup = parts.setup,
         .setupServices = {.analogInput = parts.runParts.analogInput,
                           .sound = parts.sound,
                           .toneFile = parts.toneFile,
                           .storage = parts.storage()},
         .programs = parts.programs,
         .about = parts.about,
         .help = parts.help,
         .aboutServices = {.StartSysInfo = [&parts] { return parts.systemViewer.StartSysInfo(); },
                           .information = [&parts] { return parts.systemInformation(); }},
         .dialogs = parts.dialogs,
         .messages = parts.messages,
         .deviceDescription = [&parts] { return parts.runParts.analogInput.deviceDescription(); },
         .prepareExit =
             [&parts] {
                 return prepareExit(parts.state, parts.messages, parts.store,
                                    [&parts] { return parts.save.mnuSave_Click(); });
             }});
    parts.window.showStartUp();
    return std::unique_ptr<WindowProgram>(new WindowProgram(std::move(made)));
}

void WindowProgram::show() {
    if (m_parts->startUpResult.maximized)
        m_parts->window.showMaximized();
    else
        m_parts->window.show();
    if (m_parts->firstStart && m_parts->boards.find(1)->description().spec.starts_with("simulator"))
        m_parts->state.notice = "The simulated board is in use; its number in the setup (Ctrl+E) chooses another.";
    m_parts->window.refresh();
    // When the events run, so that the dialog opens over the window.
    if (!m_parts->files.empty())
        QTimer::singleShot(0, &m_parts->window, [this] { m_parts->window.openFiles(m_parts->files); });
}

frmMain& WindowProgram::window() {
    return m_parts->window;
}

} // namespace tavex2
