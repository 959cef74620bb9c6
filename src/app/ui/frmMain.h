#pragma once

#include "acquisition/RunView.h"
#include "acquisition/SetupCommands.h"
#include "acquisition/SetupDialog.h"
#include "acquisition/records/ProgramState.h"
#include "analysis/TrialSetCommands.h"
#include "app/AboutCommands.h"
#include "app/Commands.h"
#include "app/OutsidePrograms.h"
#include "app/ViewState.h"
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
#include <memory>
#include <string_view>
#include <vector>

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
    TrialSetCommands& trialSets;
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

/// The main window: it binds menu items, buttons and keys to the table of commands, and shows what viewState() makes of
/// the program's state; nothing is worked out here. User-interface thread only.
class frmMain final : public QMainWindow, public RunView, public FileView, public OptionsView {
    Q_OBJECT

  public:
    explicit frmMain(ProgramState& state);
    ~frmMain() override;

    /// Connects the commands; called once, before the window is shown.
    void connectCommands(MainCommands commands);

    /// Opens trial files or a setup file, as they are dropped on the window or named on the command line.
    void openFiles(const std::vector<std::filesystem::path>& paths);

    /// Shows what start-up made of the state. The window itself is shown by the caller.
    void showStartUp();

    /// Runs a command of the table, where the table lets it.
    void run(Command command);

    // What the logic asks for.
    void refresh() override;
    void paintNow() override;
    void RedrawTrials() override;
    void beginRealTime(double windowSeconds) override;
    void showRealTime(const TrialData& block, double sampleIntervalSeconds) override;
    void endRealTime() override;
    void editComments() override;
    bool fileProgress(int done, int of) override;
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
    void bindActions();
    void bindCommands();
    void bindFileCommands();
    void bindViewCommands();
    void bindOutsideCommands();
    void bind(Command command, std::function<void()> handler);
    bool runGuarded(const CommandRule& rule, const std::function<void()>& handler);

    void UpdateMenus(const ViewState& view);
    void UpdateCaption(const ViewState& view);
    void showStatus(const ViewState& view);
    void showBusyPointer(bool busy);

    void tell(const std::string& notice);
    void openOne(const std::filesystem::path& path, bool told);
    void openRecent(const QString& file);
    void mnuInfo_Click();
    void mnuLabels_Click();
    void mnuLegend_Click();
    void mnuScale_Click();
    void tbReset_Click();
    bool mayExit();

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
    std::array<std::vector<QAction*>, commandCount> m_actions;
    std::array<std::function<void()>, commandCount> m_handlers;
    bool m_siblingFound = true; ///< as the Analyze menu found it when it opened last
    bool m_gateShut = false;    ///< a command that lets events run is running
    bool m_busyPointer = false;
    bool m_exiting = false;
};

} // namespace tavex2
