#pragma once

#include "acquisition/records/ProgramState.h"
#include "display/GraphControl.h"
#include "display/ZoomCommands.h"
#include "display/ui/CWGraph.h"
#include "display/ui/GraphMouse.h"
#include "display/ui/GraphPictures.h"
#include "display/ui/PointerReadout.h"
#include "display/ui/RealTimePlot.h"
#include "display/ui/TrialGraphs.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace tavex2 {

/// The middle of the main window: the graphs of the current trial, the last trial and the average, laid out one below
/// the other, with everything that mouse and keys do on them. User-interface thread.
class GraphsPanel final : public QWidget {
    Q_OBJECT

  public:
    /// `state` outlives the panel.
    explicit GraphsPanel(ProgramState& state, QWidget* parent = nullptr);

    /// Gives the graphs their context menu; called once, the services outlive the panel.
    void offerPictures(FileDialogs& dialogs, Messages& messages);

    /// The current trial's graph.
    const CWGraph& cwG() const { return m_cwG; }
    GraphControls controls() { return {m_cwG, m_cwGLast, m_cwGAvg}; }

    void RedrawTrials() { m_trials.RedrawTrials(m_state); }

    /// What the current trial's graph says while it is empty, and what is to be known of the average.
    void showTexts(const QString& currentHint, const QString& averageRemark);

    /// Labels the axes in the units of the settings and scales the graphs as they say.
    void followDisplaySettings();

    void beginRealTime(double windowSeconds);
    void showRealTime(const TrialData& block, double sampleIntervalSeconds);
    void endRealTime();

    /// The command "Autoscale graphs". A picture that a real-time view left gives way to the current trial.
    Result<void> mnuResetScale_Click();

    /// Runs a command of the zoom on the graphs and shows its outcome.
    void zoom(const std::function<Result<void>(ZoomCommands&)>& command);
    void zoom(void (ZoomCommands::*command)());
    const ZoomState& zoomState() const { return m_zoom.state(); }

    /// Takes a key that moves or zooms the view; False for others.
    bool keyPressed(int key) { return m_mouse.keyPressed(key); }

    /// Shows the graphs that the flags ask for and lays them out.
    void Form_Resize();

  Q_SIGNALS:
    /// Check marks and buttons are to follow zoomState().
    void zoomStateChanged();
    /// What lies under the pointer, in words; empty for nothing.
    void readoutChanged(const QString& text);
    /// A command could not be done; the text says why.
    void failed(const QString& reason);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void watchPointer(CWGraph& graph, std::function<SamplingSettings()> sampling);

    ProgramState& m_state;
    CWGraph m_cwG{this};
    CWGraph m_cwGLast{this};
    CWGraph m_cwGAvg{this};
    TrialGraphs m_trials{m_cwG, m_cwGLast, m_cwGAvg};
    ZoomCommands m_zoom{controls()};
    GraphMouse m_mouse{m_cwG, m_cwGLast, m_cwGAvg, m_zoom, this};
    RealTimePlot m_realTime{m_cwG};
    PointerReadout m_readout;
    std::optional<GraphPictures> m_pictures;
};

} // namespace tavex2
