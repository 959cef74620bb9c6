#include "app/ui/frmMain.h"

#include "acquisition/RunController.h"
#include "acquisition/ui/frmProperties.h"
#include "analysis/ui/frmInfo.h"
#include "analysis/ui/frmLabels.h"
#include "analysis/ui/frmOverlay.h"
#include "app/ui/FileWork.h"
#include "app/ui/RecentFilesMenu.h"
#include "app/ui/frmWaiting.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "display/ui/GraphsPanel.h"
#include "display/ui/frmLegend.h"
#include "display/ui/frmScale.h"
#include "files/RecentFiles.h"
#include "files/ui/frmComments.h"
#include "help/HelpCommands.h"
#include "platform/qt/ElidedLabel.h"
#include "ui_frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDeadlineTimer>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

/// The icons lie in this library, which a linker takes nothing from without being asked. Outside any namespace, as the
/// toolkit wants it.
static void useIcons() {
    Q_INIT_RESOURCE(icons);
}

namespace tavex2 {

namespace {

/// The texts of the status bar: what the user is told, the value under the pointer, the board in use.
template <class Label>
Label* panel(QWidget* parent, const char* name, const QString& accessibleName) {
    auto* label = new Label(parent);
    label->setObjectName(QLatin1String(name));
    label->setAccessibleName(accessibleName);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QProgressBar* progressPanel(QWidget* parent) {
    auto* bar = new QProgressBar(parent);
    bar->setObjectName(QStringLiteral("prgTrial"));
    bar->setAccessibleName(QObject::tr("Progress of the trial"));
    bar->setMaximumWidth(bar->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 30);
    bar->hide();
    return bar;
}

} // namespace

frmMain::frmMain(ProgramState& state)
    : m_state(state), m_ui(std::make_unique<Ui::frmMain>()), m_graphs(new GraphsPanel(state)),
      m_waiting(new frmWaiting(this)), m_legend(new frmLegend(this)) {
    useIcons();
    m_ui->setupUi(this);
    QApplication::setWindowIcon(windowIcon()); // also of the dialogs and the help
    setCentralWidget(m_graphs);
    setAcceptDrops(true);
    m_graphs->setFocus();                                         // no graph looks chosen before the user chose one
    resize(size().boundedTo(screen()->availableSize() * 9 / 10)); // a small or strongly magnified screen
    addStatusPanels();
    describeForAssistance();
}

frmMain::~frmMain() {
    showBusyPointer(false);
}

/// All panels are permanent, so that no passing text of the toolkit's hides one.
void frmMain::addStatusPanels() {
    m_statusPanel = panel<ElidedLabel>(this, "StatusPanel1", tr("Status"));
    m_pointerPanel = panel<QLabel>(this, "PointerPanel", tr("Value under the pointer"));
    m_pointerPanel->setMinimumWidth(
        fontMetrics().horizontalAdvance(QStringLiteral("00.00000 s, -00.0000 V, channel 00")));
    m_progress = progressPanel(this);
    m_devicePanel = panel<QLabel>(this, "StatusPanel2", tr("A/D board"));
    auto* cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancelFile"));
    cancel->setToolTip(tr("End the work on the file (Esc); no half file is left"));
    m_fileWork = new FileWork(*m_progress, *cancel, this);
    m_ui->StatusBar->addPermanentWidget(m_statusPanel, 1);
    for (QWidget* each : {static_cast<QWidget*>(m_pointerPanel), static_cast<QWidget*>(m_progress),
                          static_cast<QWidget*>(cancel), static_cast<QWidget*>(m_devicePanel)})
        m_ui->StatusBar->addPermanentWidget(each);
    m_pointerPanel->hide(); // until the pointer is on a sample: the run's words need the room
    connect(m_graphs, &GraphsPanel::readoutChanged, this, [this](const QString& text) {
        m_pointerPanel->setText(text);
        m_pointerPanel->setVisible(!text.isEmpty());
    });
    connect(m_graphs, &GraphsPanel::failed, this, [this](const QString& reason) { tell(reason.toStdString()); });
}

/// Names for screen readers, and the key texts of the tool bar as the names of its buttons.
void frmMain::describeForAssistance() {
    for (QAction* action : m_ui->tbToolBar->actions()) {
        if (auto* button = qobject_cast<QToolButton*>(m_ui->tbToolBar->widgetForAction(action))) {
            button->setObjectName(action->objectName().mid(2));
            button->setAccessibleName(action->text());
        }
    }
    m_ui->tbToolBar->toggleViewAction()->setObjectName(QStringLiteral("tbToolBarView"));
    m_ui->tbToolBar->setAccessibleName(m_ui->tbToolBar->windowTitle());
    m_ui->mnuBar->setAccessibleName(tr("Menus"));
}

// Binding -------------------------------------------------------------------------------------------------------------

void frmMain::connectCommands(MainCommands commands) {
    m_commands = std::make_unique<MainCommands>(std::move(commands));
    m_graphs->offerPictures(m_commands->dialogs, m_commands->messages);
    bindActions();
    bindCommands();
    bindFileCommands();
    bindViewCommands();
    bindOutsideCommands();
}

/// Every menu item and button runs its command. A key that is held down counts once.
void frmMain::bindActions() {
    for (const CommandRule& rule : commandRules()) {
        const QString names = QString::fromLatin1(rule.actions.data(), static_cast<qsizetype>(rule.actions.size()));
        for (const QString& name : names.split(QLatin1Char(' '))) {
            auto* action = findChild<QAction*>(name);
            Q_ASSERT(action != nullptr);
            action->setAutoRepeat(false);
            m_actions[static_cast<std::size_t>(rule.command)].push_back(action);
            connect(action, &QAction::triggered, this, [this, command = rule.command] { run(command); });
        }
    }
}

void frmMain::bind(Command command, std::function<void()> handler) {
    m_handlers[static_cast<std::size_t>(command)] = std::move(handler);
}

void frmMain::bindCommands() {
    using enum Command;
    RunController& run = m_commands->run;
    bind(Command::Collect, [&run] { run.Collect(); });
    bind(RealTime, [&run] { run.mnuRealTime_Click(); });
    bind(Stop, [&run] { run.Stop(); });
    connect(m_waiting, &frmWaiting::stopRequested, this, [this] { this->run(Command::Stop); });
    bind(Information, [this] { mnuInfo_Click(); });
    TrialSetCommands& sets = m_commands->trialSets;
    bind(Command::AddOverlay, [&sets] { sets.mnuOverlay_Click(); });
    bind(ViewOverlay, [this] { frmOverlay(m_state, m_graphs->cwG(), this).exec(); });
    bind(ClearOverlay, [&sets] { sets.mnuClear_Click(); });
    bind(Command::ClearAverage, [&sets] { sets.mnuClearAverage_Click(); });
    bind(Undo, [&sets] { sets.mnuUndo_Click(); });
    bind(EditComments, [this] { editComments(); });
    bind(EditSetup, [this] { mnuProperties_Click(); });
    bind(EditLabels, [this] { mnuLabels_Click(); });
    constexpr std::array options{Autosave, DebugMode, ResetBefore, StartMaximized, SaveOffsets, LoadSetup, SaveSetup};
    for (std::size_t index = 0; index < options.size(); ++index)
        bind(options[index], [this, index] { m_commands->setup.mnuOption_Click(static_cast<int>(index)); });
    bind(AutosaveWithoutAsking, [this] { m_state.autosaveWithoutAsking = !m_state.autosaveWithoutAsking; });
}

void frmMain::bindFileCommands() {
    using enum Command;
    bind(OpenTrial, [this] { m_commands->open.mnuOpenLumidor2_Click(); });
    bind(ImportStimulus, [this] { m_commands->stimulusFiles.mnuOpen_Click(); });
    bind(SaveTrial, [this] { m_commands->save.mnuSave_Click(); });
    bind(SaveTrialAs, [this] { m_commands->save.mnuSaveAs_Click(); });
    bind(ExportTab, [this] { m_commands->exports.mnuTab_Click(); });
    bind(ExportLumidor, [this] { m_commands->exports.mnuLumidor_Click(); });
    bind(ExportStimulus, [this] { m_commands->stimulusFiles.mnuPulvo_Click(); });
    bind(ExportOverlay, [this] { m_commands->exports.mnuLumidorO_Click(); });
    bind(Exit, [this] { close(); });
    auto* recent = new RecentFilesMenu(*m_ui->mnuFile, *m_ui->mnuRecent, m_state.paths.RecentFiles, this);
    connect(recent, &RecentFilesMenu::chosen, this, &frmMain::openRecent);
}

void frmMain::bindViewCommands() {
    using enum Command;
    const auto toggle = [this](bool& shown) {
        shown = !shown;
        m_graphs->Form_Resize();
    };
    bind(ShowLastTrial, [this, toggle] { toggle(m_state.flags.ShowLastTrial); });
    bind(ShowAverage, [this, toggle] { toggle(m_state.flags.ShowAveragedTrials); });
    bind(ShowLegend, [this] { mnuLegend_Click(); });
    connect(m_legend, &frmLegend::Form_Unload, this, [this] {
        m_state.flags.legendClosed = true;
        refresh();
    });
    bind(Scale, [this] { mnuScale_Click(); });
    bind(ResetScale, [this] { m_graphs->zoom([this](ZoomCommands&) { return m_graphs->mnuResetScale_Click(); }); });
    bind(MouseZooms, [this] { m_graphs->zoom(&ZoomCommands::mnuMouseZooms_Click); });
    bind(MousePans, [this] { m_graphs->zoom(&ZoomCommands::mnuMousePans_Click); });
    bind(ZoomArea, [this] { m_graphs->zoom(&ZoomCommands::mnuZooms_Click); });
    bind(ButtonZoom, [this] { m_graphs->zoom(&ZoomCommands::tbZoom_Click); });
    bind(ButtonPan, [this] { m_graphs->zoom(&ZoomCommands::tbPan_Click); });
    bind(ButtonReset, [this] { tbReset_Click(); });
    connect(m_graphs, &GraphsPanel::zoomStateChanged, this, &frmMain::refresh);
}

void frmMain::bindOutsideCommands() {
    using enum Command;
    OutsidePrograms& programs = m_commands->programs;
    constexpr std::array analyse{StartSibling, StartQuattro, StartExcel};
    constexpr std::array spreadsheets{SpreadsheetExcel, SpreadsheetQuattro, SpreadsheetOther};
    for (std::size_t index = 0; index < analyse.size(); ++index) {
        bind(analyse[index], [&programs, index] { programs.mnuProgram_Click(static_cast<int>(index)); });
        bind(spreadsheets[index], [&programs, index] { programs.mnuSpreadsheet_Click(static_cast<int>(index)); });
    }
    bind(ButtonSibling, [&programs] { programs.mnuProgram_Click(0); });
    connect(m_ui->mnuAnalyse, &QMenu::aboutToShow, this, [this, &programs] {
        m_siblingFound = programs.siblingFound();
        refresh();
    });
    bind(ShowDigitally, [&programs] { programs.mnuDigital_Click(); });
    bind(OpenExplorer, [&programs] { programs.mnuExplorer_Click(); });
    bind(OpenNotepad, [&programs] { programs.mnuNotepad_Click(); });

    HelpCommands& help = m_commands->help;
    bind(HelpContents, [&help] { help.mnuContents_Click(); });
    bind(HelpSearch, [&help] { help.mnuSearch_Click(); });
    bind(About, [this] { frmAbout(m_commands->aboutServices, this).exec(); });
    constexpr std::array others{AboutHelp, AboutUpdate, AboutWebsite, AboutHardware};
    for (std::size_t item = 0; item < others.size(); ++item)
        bind(others[item], [this, item] { m_commands->about.mnuAbout_Click(static_cast<int>(item) + 1); });
}

// Running -------------------------------------------------------------------------------------------------------------

void frmMain::run(Command command) {
    runGuarded(ruleOf(command), m_handlers[static_cast<std::size_t>(command)]);
    refresh(); // also where it was refused: an item that was chosen has turned its own mark
}

/// The one gate of all commands. False when the command was refused.
bool frmMain::runGuarded(const CommandRule& rule, const std::function<void()>& handler) {
    RunController& run = m_commands->run;
    const bool handingOn = run.busy() && !collecting(m_state.run.phase);
    if (!mayRun(rule, handingOn ? RunPhase::Acquiring : m_state.run.phase)) {
        tell(std::string(rule.refusal));
        return false;
    }
    if (rule.letsEventsRun && m_gateShut) {
        tell("Finish the command that is open first.");
        return false;
    }
    if (rule.duringRun == DuringRun::WhileIdle && m_state.RealTimeMode()) run.Stop();
    const QScopedValueRollback gate(m_gateShut, m_gateShut || rule.letsEventsRun);
    std::optional<RunController::Hold> hold;
    if (rule.duringRun == DuringRun::Holds || rule.duringRun == DuringRun::WhileIdle) hold.emplace(run);
    handler();
    return true;
}

void frmMain::tell(const std::string& notice) {
    m_state.notice = notice;
    refresh();
}

// Showing -------------------------------------------------------------------------------------------------------------

void frmMain::showStartUp() {
    setMinimumSize(size()); // as it is before it is maximised
    RedrawTrials();
    refresh();
}

void frmMain::refresh() {
    if (!m_commands) return;
    const ViewState view = viewState(
        m_state,
        {.zoom = m_graphs->zoomState(), .device = m_commands->deviceDescription(), .siblingFound = m_siblingFound});
    UpdateMenus(view);
    UpdateCaption(view);
    showStatus(view);
    showBusyPointer(view.busyPointer);
    m_waiting->setVisible(view.waitingShown);
    m_legend->setVisible(view.legendShown);
    m_graphs->showTexts(QString::fromStdString(view.currentHint), QString::fromStdString(view.averageTip));
    if (m_state.fileWork.empty()) m_fileWork->end();
}

void frmMain::UpdateMenus(const ViewState& view) {
    for (std::size_t command = 0; command < commandCount; ++command) {
        const CommandLook& look = view.commands[command];
        for (QAction* action : m_actions[command]) {
            action->setEnabled(look.enabled);
            if (look.checked) action->setChecked(*look.checked);
        }
    }
    m_ui->mnuExport->setEnabled(view.exportMenu);
    m_ui->mnuExportOverlay->setEnabled(view.exportOverlayMenu);
}

void frmMain::UpdateCaption(const ViewState& view) {
    setWindowTitle(QString::fromStdString(view.caption));
}

void frmMain::showStatus(const ViewState& view) {
    m_statusPanel->showText(QString::fromStdString(view.status));
    m_devicePanel->setText(QString::fromStdString(view.device));
    if (m_fileWork->active()) return; // the bar is the work's
    m_progress->setVisible(view.progress.has_value());
    if (!view.progress) return;
    constexpr int steps = 1000;
    m_progress->setRange(0, view.progress->known ? steps : 0); // without a range it moves and does not say how far
    if (!view.progress->known) return;
    m_progress->setValue(static_cast<int>(steps * view.progress->share));
    m_progress->setFormat(
        tr("%1 of %2 s").arg(view.progress->seconds, 0, 'f', 1).arg(view.progress->ofSeconds, 0, 'f', 1));
}

void frmMain::showBusyPointer(bool busy) {
    if (busy == std::exchange(m_busyPointer, busy)) return;
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

/// Nothing that the user does is taken meanwhile. The desktop shows a new window when it comes to it, but not for ever.
void frmMain::paintNow() {
    const auto onScreen = [](const QWidget& window) {
        return !window.isVisible() || (window.windowHandle() != nullptr && window.windowHandle()->isExposed());
    };
    const QDeadlineTimer giveUp(std::chrono::milliseconds(500));
    do {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 10);
    } while (!onScreen(*m_waiting) && !giveUp.hasExpired());
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void frmMain::RedrawTrials() {
    m_graphs->RedrawTrials();
    m_legend->showNames(m_state.header);
}

void frmMain::beginRealTime(double windowSeconds) {
    m_graphs->beginRealTime(windowSeconds);
}

void frmMain::showRealTime(const TrialData& block, double sampleIntervalSeconds) {
    m_graphs->showRealTime(block, sampleIntervalSeconds);
}

void frmMain::endRealTime() {
    m_graphs->endRealTime();
}

bool frmMain::fileProgress(int done, int of) {
    return m_fileWork->step(done, of);
}

void frmMain::setMaximized(bool maximized) {
    maximized ? showMaximized() : showNormal();
}

void frmMain::followDisplaySettings() {
    m_graphs->followDisplaySettings();
}

// Forms ---------------------------------------------------------------------------------------------------------------

void frmMain::mnuInfo_Click() {
    if (hasCurrentTrial(m_state))
        frmInfo(m_state, m_graphs->cwG(), this).exec();
    else
        tell("There is no trial to measure. Collect or open one first.");
}

/// The comments are those of the current trial and, until they are changed, of the next ones.
void frmMain::editComments() {
    const TrialPtr& trial = m_state.trials.CurrentTrial;
    const int number = trial ? trial->number : m_state.settings.setup.TrialNumber;
    if (frmComments(m_state.comments, number, this).exec() != QDialog::Accepted || !m_state.DataPresent()) return;
    m_state.changeCurrent([this](Trial& changed) { changed.comments = m_state.comments; });
}

/// So are the labels and units.
void frmMain::mnuLabels_Click() {
    frmLabels(m_state, this).exec();
    m_legend->showNames(m_state.header);
    if (!m_state.DataPresent()) return;
    m_state.changeCurrent([this](Trial& trial) {
        trial.header.Labels = m_state.header.Labels;
        trial.header.Units = m_state.header.Units;
    });
}

void frmMain::mnuProperties_Click() {
    if (frmProperties(m_state, m_commands->setupServices, this).exec() == QDialog::Accepted)
        m_commands->setup.afterSetup();
    refresh();
}

/// A legend that was closed by its close box still counts as shown: the first command after that only turns the flag.
void frmMain::mnuLegend_Click() {
    bool& shown = m_state.flags.LegendShown;
    shown = !shown;
    m_state.flags.legendClosed = false;
}

void frmMain::mnuScale_Click() {
    m_graphs->zoom([this](ZoomCommands& commands) {
        frmScale(m_state.settings, m_graphs->controls(), commands, this).exec();
        return Result<void>();
    });
}

void frmMain::tbReset_Click() {
    m_graphs->zoom([this](ZoomCommands& commands) {
        return commands.tbReset_Click([this] { return m_graphs->mnuResetScale_Click(); });
    });
}

// Files ---------------------------------------------------------------------------------------------------------------

void frmMain::openRecent(const QString& file) {
    const std::string path = file.toStdString();
    std::error_code error;
    if (std::filesystem::exists(pathFromText(path), error)) {
        openFiles({pathFromText(path)});
        return;
    }
    forgetFile(m_state.paths, path);
    tell(path + " is not there any more; it is off the list now.");
}

/// Each of several files becomes the current trial in turn, without a box for each.
void frmMain::openFiles(const std::vector<std::filesystem::path>& paths) {
    runGuarded(ruleOf(Command::OpenTrial), [&] {
        for (const std::filesystem::path& path : paths)
            openOne(path, paths.size() == 1);
    });
    refresh();
}

void frmMain::openOne(const std::filesystem::path& path, bool told) {
    const std::string kind = extensionOf(path);
    if (kind == ".set")
        m_commands->setup.LoadSetupFile(path);
    else if (kind == ".plv")
        m_commands->stimulusFiles.importPlv(path);
    else
        m_commands->open.openLmb(path, told);
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && std::ranges::all_of(urls, &QUrl::isLocalFile)) event->acceptProposedAction();
}

/// Opened when the drop is over: the other program waits for its end, and dialogs may follow.
void frmMain::dropEvent(QDropEvent* event) {
    std::vector<std::filesystem::path> paths;
    for (const QUrl& url : event->mimeData()->urls())
        paths.push_back(pathFromText(url.toLocalFile().toStdString()));
    event->acceptProposedAction();
    QTimer::singleShot(0, this, [this, paths] { openFiles(paths); });
}

// Keys and exit -------------------------------------------------------------------------------------------------------

void frmMain::keyPressEvent(QKeyEvent* event) {
    const auto shortcutKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if ((event->modifiers() & shortcutKeys) != 0 || !m_graphs->keyPressed(event->key()))
        QMainWindow::keyPressEvent(event);
}

/// A collection in progress is stopped first, with its own question; then the exit routine asks and stores.
bool frmMain::mayExit() {
    RunController& run = m_commands->run;
    if (run.busy()) {
        run.Stop();
        if (run.busy()) return false;
    }
    return m_commands->prepareExit();
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (m_fileWork->active() || m_gateShut || (!m_exiting && !mayExit())) {
        event->ignore();
        return;
    }
    m_exiting = true;
    event->accept();
    QApplication::quit();
}

} // namespace tavex2
