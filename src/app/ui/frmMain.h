#pragma once

#include "acquisition/RunView.h"
#include "acquisition/records/ProgramState.h"
#include "files/SaveCommands.h"

#include <QMainWindow>
#include <QSet>

#include <functional>
#include <memory>

class QAction;
class QLabel;
class QProgressBar;

namespace Ui {
class frmMain;
}

namespace tavex2 {

class RunController;
class SetupCommands;
class TrialGraphs;
class frmWaiting;

/// The commands behind the main window's menus and buttons. The window calls them; none is null.
struct MainCommands {
    RunController& run;
    SaveCommands& save;
    SetupCommands& setup;
    std::function<std::string()> deviceDescription; ///< "Device: " and the selected board
    std::function<bool()> prepareExit;              ///< asks and stores; False keeps the program running
};

/// The main window: it shows the state, takes input and calls the commands; nothing is worked out here.
/// User-interface thread only.
class frmMain final : public QMainWindow, public RunView, public SaveView {
    Q_OBJECT

  public:
    explicit frmMain(ProgramState& state);
    ~frmMain() override;

    /// Connects the commands; called once, before the window is shown.
    void connectCommands(MainCommands commands);

    /// Shows what start-up found: check marks, menus, caption. The window itself is shown by the caller.
    void showStartUp(int spreadsheetItem);

    // What a run and a save command show.
    void setStatusText(const std::string& text) override;
    void setBusyPointer(bool busy) override;
    void setStopEnabled(bool enabled) override;
    void setWaitingShown(bool shown) override;
    void showProgress(const std::optional<AnalogProgress>& progress) override;
    void RedrawTrials() override;
    void UpdateMenus() override;
    void UpdateCaption() override;
    void editComments() override;
    void processPending() override;

  protected:
    /// The close box runs the same routine as Exit.
    void closeEvent(QCloseEvent* event) override;

  private:
    void describeForAssistance();
    void disableAllBut(const QSet<const QAction*>& built);
    void mnuExit_Click();
    void saveWith(const std::function<void()>& command);
    void mnuOption_Click(int index, bool checked);
    void mnuLastTrial_Click(bool shown);
    void mnuAveragedTrials_Click(bool shown);
    bool mayExit();

    ProgramState& m_state;
    std::unique_ptr<Ui::frmMain> m_ui;
    std::unique_ptr<MainCommands> m_commands;
    std::unique_ptr<TrialGraphs> m_graphs;
    frmWaiting* m_waiting;
    QLabel* m_statusPanel;
    QLabel* m_devicePanel;
    QProgressBar* m_progress;
    bool m_busyPointer = false;
    bool m_exiting = false;
};

} // namespace tavex2
