#pragma once

#include "acquisition/records/ProgramState.h"
#include "display/ui/CWGraph.h"

namespace tavex2 {

/// Fills the main window's three graphs: current trial, last trial, average of the saved trials. The graphs outlive it.
/// User-interface thread.
class TrialGraphs {
  public:
    /// Gives the graphs their first captions, and accessible names and hints where they have none.
    TrialGraphs(CWGraph& cwG, CWGraph& cwGLast, CWGraph& cwGAvg);

    /// Shows the trials of the buffers. With DisplayAutoScale True the voltage axes are rescaled to the data and the
    /// time axes go from 0 to the extent of what each graph shows; a graph without a trial follows the current trial's
    /// graph, and that one the settings' Repeat x Duration. Otherwise the limits stay. Trials that are on a graph
    /// already are not read again. The current trial's graph is left to the real-time view while that runs, and the
    /// last picture of it stays until there is another current trial.
    void RedrawTrials(const ProgramState& state);

    /// The same, with the current trial in place of the last picture of a real-time view.
    void showCurrentTrial(const ProgramState& state);

    /// Gives the graphs without a trial the time axis of the current trial's graph.
    void alignEmptyGraphs();

  private:
    std::shared_ptr<const TrialPyramid> pyramidOf(const TrialData& trial) const;

    CWGraph& m_cwG;
    CWGraph& m_cwGLast;
    CWGraph& m_cwGAvg;
    TrialData m_current; ///< what was shown as the current trial last
};

} // namespace tavex2
