#pragma once

#include "acquisition/records/TrialBuffers.h"
#include "display/ui/CWGraph.h"

#include <QTimer>

namespace tavex2 {

/// Shows the real-time view on a graph. It draws on a clock, not on data: a block waits for the next tick and is
/// replaced by a newer one, so a slow redraw costs pictures and holds nobody up. User-interface thread.
class RealTimePlot final : public QObject {
    Q_OBJECT

  public:
    explicit RealTimePlot(CWGraph& graph, QObject* parent = nullptr);

    /// The first block takes the place of what the graph shows, with a note that nothing is stored. With `followsData`
    /// the time axis goes over `windowSeconds` from then on and the voltage axis follows the data, else the limits
    /// stay.
    void begin(double windowSeconds, bool followsData);
    /// Takes the newest block; sample i lies at i x `sampleIntervalSeconds`.
    void show(const TrialData& block, double sampleIntervalSeconds);
    /// Leaves the last picture on the graph.
    void end();

  Q_SIGNALS:
    /// The first block is on the graph.
    void began();

  private:
    void draw();

    CWGraph& m_graph;
    QTimer m_tick;
    TrialData m_newest;
    double m_sampleIntervalSeconds = 1;
    double m_windowSeconds = 1;
    bool m_followsData = true;
    bool m_first = true; ///< nothing has been drawn since the view began
};

} // namespace tavex2
