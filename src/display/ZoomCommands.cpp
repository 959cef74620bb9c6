#include "display/ZoomCommands.h"

#include "display/Zoom.h"

namespace tavex2 {

namespace {

// Tracking modes of the graph control.
constexpr int trackNothing = 0;
constexpr int trackEvents = 1;
constexpr int trackPan = 3;
constexpr int trackZoomArea = 6;

} // namespace

GraphTool ZoomState::tool() const {
    if (!graphEnabled) return GraphTool::None;
    switch (trackMode) {
    case trackEvents:
        return GraphTool::HoldToZoom;
    case trackPan:
        return GraphTool::Pan;
    case trackZoomArea:
        return GraphTool::ZoomArea;
    default:
        return GraphTool::None;
    }
}

// Menu and tool bar ---------------------------------------------------------------------------------------------------

void ZoomCommands::mnuMouseZooms_Click() {
    m_state.MouseZooms = !m_state.MouseZooms;
    m_state.graphEnabled = m_state.MouseZooms;
    // Panning or a reset may have left another mode, in which holding a button would do nothing.
    if (m_state.MouseZooms) m_state.trackMode = trackEvents;
}

void ZoomCommands::mnuMousePans_Click() {
    m_state.MousePans = !m_state.MousePans;
    m_state.trackMode = m_state.MousePans ? trackPan : trackNothing;
}

void ZoomCommands::mnuZooms_Click() {
    m_state.zoomsArea = !m_state.zoomsArea;
    m_state.graphEnabled = m_state.zoomsArea;
    m_state.trackMode = m_state.zoomsArea ? trackZoomArea : trackEvents;
}

void ZoomCommands::tbZoom_Click() {
    m_state.graphEnabled = true;
    m_state.trackMode = trackZoomArea;
    m_state.panButtonEnabled = true;
}

void ZoomCommands::tbPan_Click() {
    m_state.trackMode = trackPan;
}

Result<void> ZoomCommands::tbReset_Click(const std::function<Result<void>()>& resetScale) {
    m_state.graphEnabled = false;
    if (Result<void> reset = resetScale(); !reset) return reset;
    m_state.panButtonEnabled = false;
    m_state.trackMode = trackNothing;
    return {};
}

void ZoomCommands::allowPanning() {
    m_state.graphEnabled = true;
    m_state.panButtonEnabled = true;
}

// Mouse ---------------------------------------------------------------------------------------------------------------

Result<void> ZoomCommands::zoomAll(Step step, double x, double y) {
    for (GraphControl* graph : m_graphs.all())
        if (Result<void> zoomed = step(*graph, x, y); !zoomed) return zoomed;
    return {};
}

Result<void> ZoomCommands::cwG_MouseDown(int buttons, double x, double y) {
    if ((buttons & leftButton) != 0)
        if (Result<void> zoomed = zoomAll(ZoomIn, x, y); !zoomed) return zoomed;
    if ((buttons & rightButton) != 0)
        if (Result<void> zoomed = zoomAll(ZoomOut, x, y); !zoomed) return zoomed;
    if ((buttons & leftButton) != 0) m_state.ZoomingIn = true;
    if ((buttons & rightButton) != 0) m_state.ZoomingOut = true;
    if (buttons != 0) {
        m_state.timerRunning = true;
        m_state.ZoomX = x;
        m_state.ZoomY = y;
    }
    return {};
}

void ZoomCommands::cwG_MouseMove(int buttons, double x, double y) {
    if (buttons == 0) return;
    m_state.ZoomX = x;
    m_state.ZoomY = y;
}

/// Either button's release ends both directions.
void ZoomCommands::cwG_MouseUp() {
    m_state.ZoomingIn = false;
    m_state.ZoomingOut = false;
    m_state.timerRunning = false;
}

Result<void> ZoomCommands::tmrZoom_Timer() {
    if (m_state.ZoomingIn)
        if (Result<void> zoomed = zoomAll(ZoomIn, m_state.ZoomX, m_state.ZoomY); !zoomed) return zoomed;
    if (m_state.ZoomingOut)
        if (Result<void> zoomed = zoomAll(ZoomOut, m_state.ZoomX, m_state.ZoomY); !zoomed) return zoomed;
    return {};
}

} // namespace tavex2
