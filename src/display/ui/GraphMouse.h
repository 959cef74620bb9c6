#pragma once

#include "base/Result.h"
#include "display/ZoomCommands.h"
#include "display/ui/CWGraph.h"

#include <QObject>
#include <QTimer>

#include <array>

namespace tavex2 {

/// Lets mouse and keys zoom and move the three graphs, which stay aligned: press and hold on cwG, dragging it, the
/// wheel over any graph, double click, and the keys. The graphs and the commands outlive it. User-interface thread.
class GraphMouse final : public QObject {
    Q_OBJECT

  public:
    GraphMouse(CWGraph& cwG, CWGraph& cwGLast, CWGraph& cwGAvg, ZoomCommands& zoom, QObject* parent = nullptr);

    /// Brings cwG and tmrZoom to the state of the commands; called after each of them.
    void showZoomState();

    /// Arrow keys move the view, + and - zoom about its middle, Home asks for the full view. False for other keys.
    bool keyPressed(int key);

  Q_SIGNALS:
    /// The whole trial is to be shown again.
    void fullViewWanted();
    /// A command could not be done; the text says why.
    void failed(const QString& reason);

  private:
    bool zoomingAllowed() const;
    void finish(const Result<void>& result);
    void turnWheel(const CWGraph& graph, double notches, double x, double y);
    void zoomAllAround(double time, double voltage, double factor);

    CWGraph& m_cwG;
    std::array<CWGraph*, 3> m_graphs;
    ZoomCommands& m_zoom;
    QTimer m_timer{this};
};

} // namespace tavex2
