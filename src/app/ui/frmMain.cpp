#include "app/ui/frmMain.h"

#include "acquisition/RunController.h"
#include "acquisition/ui/frmProperties.h"
#include "analysis/ui/frmInfo.h"
#include "analysis/ui/frmLabels.h"
#include "analysis/ui/frmOverlay.h"
#include "app/MenuState.h"
#include "app/ui/FileWork.h"
#include "app/ui/RecentFilesMenu.h"
#include "app/ui/frmWaiting.h"
#include "base/PathText.h"
#include "base/PlainText.h"
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
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <array>

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
    m_spreadsheets = {m_ui->mnuSpreadsheet_0, m_ui->mnuSpreadsheet_1, m_ui->mnuSpreadsheet_2};
    m_options = {m_ui->mnuOption_0, m_ui->mnuOption_1, m_ui->mnuOption_2, m_ui->mnuOption_3,
                 m_ui->mnuOption_4, m_ui->mnuOption_5, m_ui->mnuOption_6};
    setCentralWidget(m_graphs);
    setAcceptDrops(true);
    m_graphs->setFocus();                                         // no graph looks chosen before the user chose one
    resize(size().boundedTo(screen()->availableSize() * 9 / 10)); // a small or strongly magnified screen
    addStatusPanels();
    describeForAssistance();
}

frmMain::~frmMain() {
    setBusyPointer(false);
}

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
    m_ui->StatusBar->addWidget(m_statusPanel, 1);
    for (QWidget* each : {static_cast<QWidget*>(m_pointerPanel), static_cast<QWidget*>(m_progress),
                          static_cast<QWidget*>(cancel), static_cast<QWidget*>(m_devicePanel)})
        m_ui->StatusBar->addPermanentWidget(each);
    connect(m_graphs, &GraphsPanel::readoutChanged, m_pointerPanel, &QLabel::setText);
    connect(m_graphs, &GraphsPanel::failed, this,
            [this](const QString& reason) { setStatusText(reason.toStdString()); });
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

// Commands ------------------------------------------------------------------------------------------------------------

void frmMain::connectCommands(MainCommands commands) {
    m_commands = std::make_unique<MainCommands>(std::move(commands));
    m_graphs->offerPictures(m_commands->dialogs, m_commands->messages);
    connectFileAndDataCommands();
    connectViewCommands();
    connectOptions();
    connectOutsidePrograms();
    connectHelp();
}

void frmMain::on(std::initializer_list<QAction*> actions, const std::function<void()>& command) {
    for (QAction* action : actions)
        connect(action, &QAction::triggered, this, command);
}

void frmMain::connectFileAndDataCommands() {
    RunController& run = m_commands->run;
    SaveCommands& save = m_commands->save;
    on({m_ui->mnuOpenLumidor2, m_ui->tbOpen},
       [this] { openWith([this] { m_commands->open.mnuOpenLumidor2_Click(); }); });
    StimulusCommands& stimulusFiles = m_commands->stimulusFiles;
    on({m_ui->mnuOpen}, [this, &stimulusFiles] { openWith([&] { stimulusFiles.mnuOpen_Click(); }); });
    on({m_ui->mnuPulvo}, [this, &stimulusFiles] { saveWith([&] { stimulusFiles.mnuPulvo_Click(); }); });
    on({m_ui->mnuSave, m_ui->tbSave}, [this, &save] { saveWith([&save] { save.mnuSave_Click(); }); });
    on({m_ui->mnuSaveAs, m_ui->tbSaveAs}, [this, &save] { saveWith([&save] { save.mnuSaveAs_Click(); }); });
    ExportCommands& exports = m_commands->exports;
    on({m_ui->mnuTab}, [this, &exports] { saveWith([&exports] { exports.mnuTab_Click(); }); });
    on({m_ui->mnuLumidor}, [this, &exports] { saveWith([&exports] { exports.mnuLumidor_Click(); }); });
    auto* recent = new RecentFilesMenu(*m_ui->mnuFile, *m_ui->mnuRecent, m_state.paths.RecentFiles, this);
    connect(recent, &RecentFilesMenu::chosen, this, &frmMain::openRecent);
    on({m_ui->mnuExit}, [this] { mnuExit_Click(); });

    on({m_ui->mnuAcquire, m_ui->tbCollect}, [&run] { run.Collect(); });
    on({m_ui->mnuRealTime, m_ui->tbRealtime}, [&run] { run.mnuRealTime_Click(); });
    on({m_ui->tbStop}, [&run] { run.Stop(); });
    on({m_ui->mnuClearAverage}, [&run] { run.mnuClearAverage_Click(); });
    OverlayCommands& overlays = m_commands->overlays;
    on({m_ui->mnuOverlay}, [&overlays] { overlays.mnuOverlay_Click(); });
    on({m_ui->mnuClear}, [&overlays] { overlays.mnuClear_Click(); });
    on({m_ui->mnuViewOverlay}, [this] { mnuViewOverlay_Click(); });
    on({m_ui->mnuLumidorO}, [this, &exports] { saveWith([&exports] { exports.mnuLumidorO_Click(); }); });
    on({m_ui->mnuInfo, m_ui->tbInformation}, [this] { mnuInfo_Click(); });
    connect(m_waiting, &frmWaiting::stopRequested, this, [&run] { run.Stop(); });
}

void frmMain::connectViewCommands() {
    on({m_ui->mnuLastTrial}, [this] { mnuLastTrial_Click(); });
    on({m_ui->mnuAveragedTrials}, [this] { mnuAveragedTrials_Click(); });
    on({m_ui->mnuLegend, m_ui->tbLegend}, [this] { mnuLegend_Click(); });
    connect(m_legend, &frmLegend::Form_Unload, this, &frmMain::frmLegend_Unload);

    connect(m_ui->mnuView, &QMenu::aboutToShow, this,
            [this] { m_ui->mnuDigital->setEnabled(menuState(m_state).digital); });

    on({m_ui->mnuScale}, [this] { mnuScale_Click(); });
    on({m_ui->mnuResetScale}, [this] { mnuResetScale_Click(); });
    on({m_ui->mnuMouseZooms}, [this] { m_graphs->zoom(&ZoomCommands::mnuMouseZooms_Click); });
    on({m_ui->mnuMousePans}, [this] { m_graphs->zoom(&ZoomCommands::mnuMousePans_Click); });
    on({m_ui->mnuZooms}, [this] { m_graphs->zoom(&ZoomCommands::mnuZooms_Click); });
    on({m_ui->tbZoom}, [this] { m_graphs->zoom(&ZoomCommands::tbZoom_Click); });
    on({m_ui->tbPan}, [this] { m_graphs->zoom(&ZoomCommands::tbPan_Click); });
    on({m_ui->tbReset}, [this] { tbReset_Click(); });
    connect(m_graphs, &GraphsPanel::zoomStateChanged, this, &frmMain::showZoomState);
}

void frmMain::connectOptions() {
    on({m_ui->mnuEdit_0}, [this] { editComments(); });
    on({m_ui->mnuEdit_2}, [this] {
        frmLabels(m_state, this).exec();
        m_legend->showNames(m_state.header);
    });
    on({m_ui->mnuEdit_1, m_ui->tbConfigure}, [this] { mnuProperties_Click(); });
    for (std::size_t index = 0; index < m_options.size(); ++index)
        on({m_options[index]}, [this, index] { mnuOption_Click(static_cast<int>(index)); });
    on({m_ui->mnuAutosaveWithoutAsking},
       [this] { m_state.autosaveWithoutAsking = m_ui->mnuAutosaveWithoutAsking->isChecked(); });
}

void frmMain::connectOutsidePrograms() {
    OutsidePrograms& programs = m_commands->programs;
    const std::array analyse{m_ui->mnuProgram_0, m_ui->mnuProgram_1, m_ui->mnuProgram_2};
    for (std::size_t index = 0; index < analyse.size(); ++index)
        on({analyse[index]}, [&programs, index] { programs.mnuProgram_Click(static_cast<int>(index)); });
    on({m_ui->tbLumidor2}, [&programs] { programs.mnuProgram_Click(0); });
    connect(m_ui->mnuAnalyse, &QMenu::aboutToShow, this,
            [this, &programs] { m_ui->mnuProgram_0->setEnabled(programs.siblingFound()); });
    for (std::size_t index = 0; index < m_spreadsheets.size(); ++index)
        on({m_spreadsheets[index]}, [this, &programs, index] {
            programs.mnuSpreadsheet_Click(static_cast<int>(index));
            checkSpreadsheet(spreadsheetItem(m_state.paths.SpreadsheetProgram));
        });
    on({m_ui->mnuDigital}, [&programs] { programs.mnuDigital_Click(); });
    on({m_ui->mnuExplorer}, [&programs] { programs.mnuExplorer_Click(); });
    on({m_ui->mnuNotepad}, [&programs] { programs.mnuNotepad_Click(); });
}

void frmMain::connectHelp() {
    HelpCommands& help = m_commands->help;
    on({m_ui->mnuContents, m_ui->tbHelp}, [&help] { help.mnuContents_Click(); });
    on({m_ui->mnuSearch}, [&help] { help.mnuSearch_Click(); });
    on({m_ui->mnuAbout_0}, [this] { frmAbout(m_commands->aboutServices, this).exec(); });
    AboutCommands& about = m_commands->about;
    const std::array others{m_ui->mnuAbout_1, m_ui->mnuAbout_2, m_ui->mnuAbout_3, m_ui->mnuAbout_4};
    for (std::size_t item = 0; item < others.size(); ++item)
        on({others[item]}, [&about, item] { about.mnuAbout_Click(static_cast<int>(item) + 1); });
}

/// Exactly the chosen program carries the mark.
void frmMain::checkSpreadsheet(int item) {
    for (std::size_t index = 0; index < m_spreadsheets.size(); ++index)
        m_spreadsheets[index]->setChecked(static_cast<int>(index) == item);
}

void frmMain::showStartUp(int spreadsheetItem) {
    const SetupOptions& setup = m_state.settings.setup;
    m_ui->mnuOption_0->setChecked(setup.Autosave);
    m_ui->mnuOption_3->setChecked(setup.StartMaximized);
    m_ui->mnuAutosaveWithoutAsking->setChecked(m_state.autosaveWithoutAsking);
    checkSpreadsheet(spreadsheetItem);
    m_ui->mnuLastTrial->setChecked(m_state.flags.ShowLastTrial);
    m_ui->mnuAveragedTrials->setChecked(m_state.flags.ShowAveragedTrials);
    setMinimumSize(size()); // as it is before it is maximised
    showZoomState();
    RedrawTrials();
    UpdateMenus();
}

// What the logic shows ------------------------------------------------------------------------------------------------

void frmMain::setStatusText(const std::string& text) {
    m_statusPanel->showText(QString::fromStdString(text));
}

void frmMain::setBusyPointer(bool busy) {
    if (!busy) m_fileWork->end();
    if (busy == m_busyPointer) return;
    m_busyPointer = busy;
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void frmMain::setStopEnabled(bool enabled) {
    m_ui->tbStop->setEnabled(enabled);
}

void frmMain::setWaitingShown(bool shown) {
    m_waiting->setVisible(shown);
}

void frmMain::showProgress(const std::optional<AnalogProgress>& progress) {
    m_progress->setVisible(progress.has_value());
    if (!progress) return;
    if (progress->waitingForTrigger) {
        m_progress->setRange(0, 0); // moves without saying how far
        return;
    }
    const double rateHz = m_state.settings.sampling.Rate;
    constexpr int steps = 1000;
    m_progress->setRange(0, steps);
    m_progress->setValue(
        static_cast<int>(steps * progress->scansInBlock / std::max<std::int64_t>(progress->blockScans, 1)));
    m_progress->setFormat(tr("%1 of %2 s")
                              .arg(static_cast<double>(progress->scansInBlock) / rateHz, 0, 'f', 1)
                              .arg(static_cast<double>(progress->blockScans - 1) / rateHz, 0, 'f', 1));
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

void frmMain::UpdateMenus() {
    const MenuState menus = menuState(m_state);
    m_ui->mnuSave->setEnabled(menus.dataCommands);
    m_ui->mnuSaveAs->setEnabled(menus.dataCommands);
    m_ui->mnuExport->setEnabled(menus.dataCommands);
    m_ui->tbSave->setEnabled(menus.dataCommands);
    m_ui->tbSaveAs->setEnabled(menus.dataCommands);
    m_ui->tbZoom->setEnabled(menus.dataCommands);
    m_ui->mnuInfo->setEnabled(menus.dataCommands);
    m_ui->tbInformation->setEnabled(menus.dataCommands);
    m_ui->tbLumidor2->setEnabled(menus.dataCommands);
    m_ui->mnuOverlay->setEnabled(menus.overlay);
    for (QAction* action : {m_ui->mnuViewOverlay, m_ui->mnuClear})
        action->setEnabled(menus.overlayCommands);
    m_ui->mnuExportOverlay->setEnabled(menus.overlayCommands);
    m_ui->mnuLegend->setChecked(menus.legendChecked);
    setStatusText("Ready");
    m_devicePanel->setText(QString::fromStdString(m_commands->deviceDescription()));
}

void frmMain::UpdateCaption() {
    setCaption(captionFor(m_state));
}

void frmMain::mnuInfo_Click() {
    if (hasCurrentTrial(m_state))
        frmInfo(m_state, m_graphs->cwG(), this).exec();
    else
        setStatusText("There is no trial to measure. Collect or open one first.");
}

void frmMain::mnuViewOverlay_Click() {
    frmOverlay(m_state, m_graphs->cwG(), this).exec();
}

void frmMain::editComments() {
    frmComments(m_state.comments, m_state.settings.setup.TrialNumber, this).exec();
}

void frmMain::setCaption(const std::string& text) {
    setWindowTitle(QString::fromStdString(text));
}

bool frmMain::fileProgress(int done, int of) {
    return m_fileWork->step(done, of);
}

// Setup and options
// ----------------------------------------------------------------------------------------------------

/// Whether no collection is in progress; else the status bar says `otherwise`.
bool frmMain::idle(const char* otherwise) {
    if (!m_commands->run.busy()) return true;
    setStatusText(otherwise);
    return false;
}

void frmMain::mnuOption_Click(int index) {
    constexpr int loadSetup = 5;
    if (index == loadSetup && !idle("A trial is being collected. Load the setup when it has arrived.")) return;
    m_commands->setup.mnuOption_Click(index);
}

/// The dialog selects boards, which nothing may be using: a collection goes before it, a real-time view ends.
void frmMain::mnuProperties_Click() {
    if (!idle("A trial is being collected. Open the setup when it has arrived.")) return;
    if (m_state.flags.RealTimeMode) m_commands->run.Stop();
    if (frmProperties(m_state, m_commands->setupServices, this).exec() == QDialog::Accepted)
        m_commands->setup.showOptionsAfterSetup();
    UpdateMenus();
}

void frmMain::setOptionChecked(int index, bool checked) {
    m_options[static_cast<std::size_t>(index)]->setChecked(checked);
}

void frmMain::setMaximized(bool maximized) {
    maximized ? showMaximized() : showNormal();
}

void frmMain::followDisplaySettings() {
    m_graphs->followDisplaySettings();
}

// Saving
// ---------------------------------------------------------------------------------------------------------------

/// Runs a command that replaces the current trial: not while one is being taken, and a real-time view ends.
void frmMain::openWith(const std::function<void()>& command) {
    if (!idle("A trial is being collected. Open the file when it has arrived.")) return;
    if (m_state.flags.RealTimeMode) m_commands->run.Stop();
    const RunController::Hold hold(m_commands->run);
    command();
}

void frmMain::openRecent(const QString& file) {
    const std::string path = file.toStdString();
    std::error_code error;
    if (std::filesystem::exists(pathFromText(path), error)) {
        openFile(pathFromText(path));
        return;
    }
    forgetFile(m_state.paths, path);
    setStatusText(path + " is not there any more; it is off the list now.");
}

void frmMain::openFile(const std::filesystem::path& path) {
    const std::string kind = lowerCase(path.extension().string());
    openWith([&] {
        if (kind == ".set")
            m_commands->setup.LoadSetupFile(path);
        else if (kind == ".plv")
            m_commands->stimulusFiles.importPlv(path);
        else
            m_commands->open.openLmb(path);
    });
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->urls().size() == 1 && event->mimeData()->urls().constFirst().isLocalFile())
        event->acceptProposedAction();
}

/// Opened when the drop is over: the other program waits for its end, and dialogs may follow.
void frmMain::dropEvent(QDropEvent* event) {
    const QString path = event->mimeData()->urls().constFirst().toLocalFile();
    event->acceptProposedAction();
    QTimer::singleShot(0, this, [this, path] { openFile(pathFromText(path.toStdString())); });
}

/// Runs a save command on the trial that is shown. A repeat that arrives meanwhile waits.
void frmMain::saveWith(const std::function<void()>& command) {
    if (m_commands->run.awaitsFirstTrial()) {
        setStatusText("A trial is being collected. Save it when it has arrived.");
        return;
    }
    const RunController::Hold hold(m_commands->run);
    command();
}

// The view
// -------------------------------------------------------------------------------------------------------------

void frmMain::mnuLastTrial_Click() {
    bool& shown = m_state.flags.ShowLastTrial;
    shown = !shown;
    m_ui->mnuLastTrial->setChecked(shown);
    m_graphs->Form_Resize();
}

void frmMain::mnuAveragedTrials_Click() {
    bool& shown = m_state.flags.ShowAveragedTrials;
    shown = !shown;
    m_ui->mnuAveragedTrials->setChecked(shown);
    m_graphs->Form_Resize();
}

void frmMain::mnuLegend_Click() {
    bool& shown = m_state.flags.LegendShown;
    m_legend->setVisible(!shown);
    m_ui->tbLegend->setChecked(!shown);
    shown = !shown;
    m_ui->mnuLegend->setChecked(shown);
}

/// The user closed the legend. The flag stays, so the next command only turns it back and the one after it shows the
/// legend again.
void frmMain::frmLegend_Unload() {
    m_ui->tbLegend->setChecked(false);
    m_ui->mnuLegend->setChecked(false);
}

void frmMain::mnuScale_Click() {
    m_graphs->zoom([this](ZoomCommands& commands) {
        frmScale(m_state.settings, m_graphs->controls(), commands, this).exec();
        return Result<void>();
    });
}

void frmMain::mnuResetScale_Click() {
    m_graphs->zoom([this](ZoomCommands&) { return m_graphs->mnuResetScale_Click(); });
}

void frmMain::tbReset_Click() {
    m_graphs->zoom([this](ZoomCommands& commands) {
        return commands.tbReset_Click([this] { return m_graphs->mnuResetScale_Click(); });
    });
}

void frmMain::showZoomState() {
    const ZoomState& zoom = m_graphs->zoomState();
    m_ui->mnuMouseZooms->setChecked(zoom.MouseZooms);
    m_ui->mnuMousePans->setChecked(zoom.MousePans);
    m_ui->mnuMousePans->setEnabled(zoom.MouseZooms);
    m_ui->mnuZooms->setChecked(zoom.zoomsArea);
    m_ui->tbPan->setEnabled(zoom.panButtonEnabled);
}

void frmMain::keyPressEvent(QKeyEvent* event) {
    const auto shortcutKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if ((event->modifiers() & shortcutKeys) != 0 || !m_graphs->keyPressed(event->key()))
        QMainWindow::keyPressEvent(event);
}

// Exit
// -----------------------------------------------------------------------------------------------------------------

/// A collection in progress is stopped first, with its own question; then the exit routine asks and stores.
bool frmMain::mayExit() {
    if (m_commands->run.busy()) {
        m_commands->run.Stop();
        if (m_commands->run.busy()) return false;
    }
    return m_commands->prepareExit();
}

void frmMain::mnuExit_Click() {
    close();
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (m_fileWork->active() || (!m_exiting && !mayExit())) {
        event->ignore();
        return;
    }
    m_exiting = true;
    event->accept();
    QApplication::quit();
}

} // namespace tavex2
