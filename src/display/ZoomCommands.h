#pragma once

#include "base/Result.h"
#include "display/GraphControl.h"

#include <functional>

namespace tavex2 {

/// What the mouse does on cwG.
enum class GraphTool { None, HoldToZoom, Pan, ZoomArea };

/// What the window shows of zooming and panning.
struct ZoomState {
    bool MouseZooms = false;       ///< check mark of "Mouse Zooms In"
    bool MousePans = false;        ///< check mark of "Mouse Pans", which can be chosen only while the one above is set
    bool zoomsArea = false;        ///< check mark of "Zoom area"
    bool graphEnabled = false;     ///< cwG takes the mouse; gates every tracking mode
    bool panButtonEnabled = false; ///< tool bar button "Pan"
    int trackMode = 1;         ///< of cwG: 0 nothing, 1 events to the program, 3 drag to pan, 6 drag to zoom an area
    bool timerRunning = false; ///< tmrZoom
    bool ZoomingIn = false;    ///< left button held
    bool ZoomingOut = false;   ///< right button held
    double ZoomX = 0;          ///< last mouse position over cwG, s
    double ZoomY = 0;          ///< and V

    /// What the mouse does at the moment, whichever menu item or button brought it about. The buttons "Zoom" and "Pan"
    /// are pressed while theirs is on.
    GraphTool tool() const;
};

/// The commands and mouse events that zoom and pan the three graphs. They keep their state here; the window shows it
/// after each call and lets tmrZoom run while it says so. User-interface thread.
class ZoomCommands {
  public:
    /// Repeat period of tmrZoom.
    static constexpr int timerIntervalMs = 200;

    /// Buttons of a mouse event, added together.
    static constexpr int leftButton = 1;
    static constexpr int rightButton = 2;

    explicit ZoomCommands(const GraphControls& graphs) : m_graphs(graphs) {}

    const ZoomState& state() const { return m_state; }

    // Menu and tool bar.
    void mnuMouseZooms_Click();
    void mnuMousePans_Click();
    void mnuZooms_Click();
    void tbZoom_Click();
    void tbPan_Click();
    /// `resetScale` is the command "Autoscale graphs"; when it fails the rest is not done.
    Result<void> tbReset_Click(const std::function<Result<void>()>& resetScale);
    /// Limits narrower than the trial were set: the view can be moved.
    void allowPanning();

    // Mouse events of cwG, at x s and y V; `buttons` are those pressed, held or released. A view that cannot be zoomed
    // ends the handler with an InvalidValue.
    Result<void> cwG_MouseDown(int buttons, double x, double y);
    void cwG_MouseMove(int buttons, double x, double y);
    void cwG_MouseUp();
    Result<void> tmrZoom_Timer();

  private:
    using Step = Result<void> (*)(GraphControl&, double, double);
    Result<void> zoomAll(Step step, double x, double y);

    GraphControls m_graphs;
    ZoomState m_state;
};

} // namespace tavex2
