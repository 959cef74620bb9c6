#include "display/ui/GraphMouse.h"

#include "display/Zoom.h"

#include <cmath>

namespace tavex2 {

namespace {

constexpr double keyShare = 0.1; ///< of the view that an arrow key moves it by

} // namespace

GraphMouse::GraphMouse(CWGraph& cwG, CWGraph& cwGLast, CWGraph& cwGAvg, ZoomCommands& zoom, QObject* parent)
    : QObject(parent), m_cwG(cwG), m_graphs{&cwG, &cwGLast, &cwGAvg}, m_zoom(zoom) {
    m_timer.setObjectName(QStringLiteral("tmrZoom"));
    m_timer.setInterval(ZoomCommands::timerIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, [this] { finish(m_zoom.tmrZoom_Timer()); });

    // Presses and drags come from the current trial's graph alone.
    cwGLast.setTrackMode(0);
    cwGAvg.setTrackMode(0);
    connect(&cwG, &CWGraph::mouseDown, this,
            [this](int button, double x, double y) { finish(m_zoom.cwG_MouseDown(button, x, y)); });
    connect(&cwG, &CWGraph::mouseMoved, this,
            [this](int buttons, double x, double y) { m_zoom.cwG_MouseMove(buttons, x, y); });
    connect(&cwG, &CWGraph::mouseUp, this, [this] {
        m_zoom.cwG_MouseUp();
        showZoomState();
    });
    connect(&cwG, &CWGraph::viewDragged, this, [this] {
        alignWithCurrent({*m_graphs[0], *m_graphs[1], *m_graphs[2]});
    });
    for (CWGraph* graph : m_graphs) {
        connect(graph, &CWGraph::wheelTurned, this,
                [this, graph](double notches, double x, double y) { turnWheel(*graph, notches, x, y); });
        connect(graph, &CWGraph::doubleClicked, this, [this] {
            if (zoomingAllowed()) Q_EMIT fullViewWanted();
        });
    }
    showZoomState();
}

void GraphMouse::showZoomState() {
    const ZoomState& state = m_zoom.state();
    // A disabled widget would hand the focus to the next graph, which then looks chosen.
    if (!state.graphEnabled && m_cwG.hasFocus() && m_cwG.parentWidget() != nullptr) m_cwG.parentWidget()->setFocus();
    m_cwG.setEnabled(state.graphEnabled);
    if (m_cwG.trackMode() != state.trackMode) m_cwG.setTrackMode(state.trackMode);
    if (!state.timerRunning)
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start();
}

void GraphMouse::finish(const Result<void>& result) {
    if (!result) Q_EMIT failed(QString::fromStdString(result.error().text));
    showZoomState();
}

bool GraphMouse::zoomingAllowed() const {
    return m_zoom.state().tool() != GraphTool::None;
}

void GraphMouse::turnWheel(const CWGraph& graph, double notches, double x, double y) {
    if (!zoomingAllowed()) return;
    const ViewPlace place = placeInView(graph, x, y);
    zoomAllAround(place.time, place.voltage, std::pow(zoomNotchFactor, notches));
}

void GraphMouse::zoomAllAround(double time, double voltage, double factor) {
    for (CWGraph* graph : m_graphs)
        zoomAround(*graph, {time, voltage}, factor);
}

bool GraphMouse::keyPressed(int key) {
    const auto move = [this](double timeShare, double voltageShare) {
        for (CWGraph* graph : m_graphs)
            moveView(*graph, timeShare, voltageShare);
    };
    switch (key) {
    case Qt::Key_Left:
        move(-keyShare, 0);
        return true;
    case Qt::Key_Right:
        move(keyShare, 0);
        return true;
    case Qt::Key_Up:
        move(0, keyShare);
        return true;
    case Qt::Key_Down:
        move(0, -keyShare);
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the key of + without Shift
        zoomAllAround(0.5, 0.5, zoomNotchFactor);
        return true;
    case Qt::Key_Minus:
        zoomAllAround(0.5, 0.5, 1 / zoomNotchFactor);
        return true;
    case Qt::Key_Home:
        Q_EMIT fullViewWanted();
        return true;
    default:
        return false;
    }
}

} // namespace tavex2
