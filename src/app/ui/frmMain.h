#pragma once

#include "acquisition/RunView.h"
#include "acquisition/SetupCommands.h"
#include "acquisition/SetupDialog.h"
#include "acquisition/records/ProgramState.h"
#include "analysis/OverlayCommands.h"
#include "app/AboutCommands.h"
#include "app/OutsidePrograms.h"
#include "app/ui/frmAbout.h"
#include "files/ExportCommands.h"
#include "files/FileView.h"
#include "files/OpenCommands.h"
#include "files/SaveCommands.h"
#include "files/StimulusCommands.h"
#include "platform/FileDialogs.h"
#include "platform/Messages.h"

#include <QMainWindow>

#include <array>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>

class QAction;
class QLabel;
class QProgressBar;

namespace Ui {
class frmMain;
}

namespace tavex2 {

class ElidedLabel;
class FileWork;
class GraphsPanel;
class HelpCommands;
class RunController;
class frmLegend;
class frmWaiting;

/// The commands behind the main window's menus and buttons. The window calls them; none is null.
struct MainCommands {
    RunController& run;
    OpenCommands& open;
    SaveCommands& save;
    ExportCommands& exports;
    OverlayCommands& overlays;
    StimulusCommands& stimulusFiles;
    SetupCommands& setup;
    SetupServices setupServices;
    OutsidePrograms& programs;
    AboutCommands& about;
    HelpCommands& help;
    AboutServices aboutServices;
    FileDialogs& dialogs;
    Messages& messages;
    std::function<std::string()> deviceDescription; ///< "Device: " and the selected board
    std::function<bool()> prepareExit;              ///< asks and stores; False keeps the program running
};

/// The main window: it shows the state, takes input and calls the commands; nothing is worked out here.
/// User-interface thread only.
class frmMain final : public QMainWindow, public RunView, public FileView, public OptionsView {
    Q_OBJECT

  public:
    explicit frmMain(ProgramState& state);
    ~frmMain() override;

    /// Connects the commands; called once, before the window is shown.
    void connectCommands(MainCommands commands);

    /// Opens a trial file or a setup file, as it is dropped on the window or named on the command line.
    void openFile(const std::filesystem::path& path);

    /// Shows what start-up found: check marks, menus, caption. The window itself is shown by the caller.
    void showStartUp(int spreadsheetItem);

    // What a run and a save command show.
    void setStatusText(const std::string& text) override;
    void setBusyPointer(bool busy) override;
    void setStopEnabled(bool enabled) override;
    void setWaitingShown(bool shown) override;
    void showProgress(const std::optional<AnalogProgress>& progress) override;
    void beginRealTime(double windowSeconds) override;
    void showRealTime(const TrialData& block, double sampleIntervalSeconds) override;
    void endRealTime() override;
    void RedrawTrials() override;
    void UpdateMenus() override;
    void UpdateCaption() override;
    void editComments() override;
    bool fileProgress(int done, int of) override;
    void setCaption(const std::string& text) override;

    // What the Options menu shows.
    void setOptionChecked(int index, bool checked) override;
    void setMaximized(bool maximized) override;
    void mnuProperties_Click() override;
    void followDisplaySettings() override;

  protected:
    /// The close box runs the same routine as Exit.
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void addStatusPanels();
    void describeForAssistance();
    void on(std::initializer_list<QAction*> actions, const std::function<void()>& command);
    void connectFileAndDataCommands();
    void connectViewCommands();
    void connectOptions();
    void connectOutsidePrograms();
    void connectHelp();
    void checkSpreadsheet(int item);

    void openWith(const std::function<void()>& command);
    void openRecent(const QString& file);
    void mnuExit_Click();
    void mnuInfo_Click();
    void mnuViewOverlay_Click();
    void saveWith(const std::function<void()>& command);
    void mnuOption_Click(int index);
    void mnuLastTrial_Click();
    void mnuAveragedTrials_Click();
    void mnuLegend_Click();
    void frmLegend_Unload();
    void mnuScale_Click();
    void mnuResetScale_Click();
    void tbReset_Click();
    void showZoomState();
    bool mayExit();
    bool idle(const char* otherwise);

    ProgramState& m_state;
    std::unique_ptr<Ui::frmMain> m_ui;
    std::unique_ptr<MainCommands> m_commands;
    GraphsPanel* m_graphs;
    frmWaiting* m_waiting;
    frmLegend* m_legend;
    ElidedLabel* m_statusPanel;
    QLabel* m_pointerPanel;
    QLabel* m_devicePanel;
    QProgressBar* m_progress;
    FileWork* m_fileWork = nullptr;
    std::array<QAction*, 7> m_options;
    std::array<QAction*, 3> m_spreadsheets;
    bool m_busyPointer = false;
    bool m_exiting = false;
};

} // namespace tavex2
