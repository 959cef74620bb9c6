#pragma once

#include "acquisition/records/TrialBuffers.h"
#include "display/AxisRange.h"
#include "display/GraphControl.h"
#include "display/TraceColours.h"
#include "display/TrialPyramid.h"
#include "display/ui/QCustomPlotLibrary.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace tavex2 {

class GraphAxis;
class TracePlottable;

/// The graph control: traces of a trial over time (seconds) and voltage (volts).
///
/// The plot area is white under every palette, because the first trace is black; all around it follows the palette and
/// looks the same while the graph is disabled, which only takes the mouse away: the pointer is still reported and the
/// context menu still asked for. Changes show at the next turn of the event loop, properties at once. Lives on the
/// user-interface thread; TrialGraphs fills the three of the main window, GraphMouse listens to them.
class CWGraph : public QCustomPlot, public GraphControl {
    Q_OBJECT
    Q_PROPERTY(double xMinimum READ xMinimum WRITE setXMinimum)
    Q_PROPERTY(double xMaximum READ xMaximum WRITE setXMaximum)
    Q_PROPERTY(double yMinimum READ yMinimum WRITE setYMinimum)
    Q_PROPERTY(double yMaximum READ yMaximum WRITE setYMaximum)
    Q_PROPERTY(QString xCaption READ xCaption WRITE setXCaption)
    Q_PROPERTY(QString yCaption READ yCaption WRITE setYCaption)
    Q_PROPERTY(int trackMode READ trackMode WRITE setTrackMode)
    Q_PROPERTY(int plotCount READ plotCount)

  public:
    explicit CWGraph(QWidget* parent = nullptr);
    ~CWGraph() override;

    /// Shows a trial from x = 0, one plot per channel, in place of what was shown. Each value is multiplied by
    /// `valueFactor` (above 0). Axes with autoscaling on follow. A trial that is shown already is not read again; no or
    /// an empty trial shows nothing.
    void plot(const TrialData& trial, double sampleIntervalSeconds, double valueFactor = 1.0);
    /// The same for a trial whose pyramid exists.
    void plot(std::shared_ptr<const TrialPyramid> pyramid, double sampleIntervalSeconds, double valueFactor = 1.0);
    void clearPlots();

    /// Draws the plot at a position (0..15) in this colour from now on; without one in the position's own.
    void setTraceColour(int position, const std::optional<Rgb>& colour);

    /// What is shown; null for nothing.
    const std::shared_ptr<const TrialPyramid>& pyramid() const { return m_pyramid; }
    /// Number of traces shown.
    int plotCount() const;

    double axisMinimum(Axis axis) const override;
    double axisMaximum(Axis axis) const override;
    void setAxisMinimum(Axis axis, double minimum) override;
    void setAxisMaximum(Axis axis, double maximum) override;
    /// Values that are no finite number are ignored.
    void setAxisRange(Axis axis, double minimum, double maximum) override;

    /// Off at first.
    void setAutoScale(Axis axis, bool on) override;
    bool autoScale(Axis axis) const;
    void rescaleOnce(Axis axis) override;

    QString axisCaption(Axis axis) const;
    void setAxisCaption(Axis axis, const QString& caption);
    void setAxisCaption(Axis axis, const std::string& caption) override;

    QString labelScaleExpression(Axis axis) const;
    void setLabelScaleExpression(Axis axis, const QString& expression);
    void setLabelScaleExpression(Axis axis, const std::string& expression) override;

    /// Text in the middle of a graph that shows nothing.
    QString emptyText() const;
    void setEmptyText(const QString& text);

    /// Text in a strip above the plot area, beside the data; empty for no strip.
    QString note() const { return m_note; }
    void setNote(const QString& text);

    /// What else is to be known of the graph: its tool tip, and the end of its description.
    void setRemark(const QString& text);

    /// A place in the widget as seconds and volts.
    double timeAt(const QPointF& place) const { return xAxis->pixelToCoord(place.x()); }
    double voltsAt(const QPointF& place) const { return yAxis->pixelToCoord(place.y()); }

    /// The traces as they are drawn: seconds between samples, and what each value is multiplied by.
    double sampleIntervalSeconds() const { return m_sampleIntervalSeconds; }
    double valueFactor() const { return m_valueFactor; }

    double xMinimum() const { return axisMinimum(Axis::Time); }
    double xMaximum() const { return axisMaximum(Axis::Time); }
    double yMinimum() const { return axisMinimum(Axis::Voltage); }
    double yMaximum() const { return axisMaximum(Axis::Voltage); }
    void setXMinimum(double seconds) { setAxisMinimum(Axis::Time, seconds); }
    void setXMaximum(double seconds) { setAxisMaximum(Axis::Time, seconds); }
    void setYMinimum(double volts) { setAxisMinimum(Axis::Voltage, volts); }
    void setYMaximum(double volts) { setAxisMaximum(Axis::Voltage, volts); }
    QString xCaption() const { return axisCaption(Axis::Time); }
    QString yCaption() const { return axisCaption(Axis::Voltage); }
    void setXCaption(const QString& caption) { setAxisCaption(Axis::Time, caption); }
    void setYCaption(const QString& caption) { setAxisCaption(Axis::Voltage, caption); }

    /// The mouse-tracking mode: 0 the mouse does nothing, 1 its events are reported, 3 dragging pans the plot area, 6
    /// dragging a rectangle zooms into it. Without effect while the graph is disabled.
    int trackMode() const { return m_trackMode; }
    void setTrackMode(int mode);

  Q_SIGNALS:
    /// Tracking mode 1: a button (1 left, 2 right, 4 middle) was pressed or released inside the plot area, or the
    /// pointer moved with `buttons` held; x in seconds, y in volts, kept inside the view.
    void mouseDown(int button, double x, double y);
    void mouseMoved(int buttons, double x, double y);
    void mouseUp(int button, double x, double y);

    /// The user dragged the view or zoomed into a rectangle.
    void viewDragged();
    /// The wheel was turned by so many notches, away from the user above 0.
    void wheelTurned(double notches, double x, double y);
    /// In tracking mode 1 there is no double click: each press is reported.
    void doubleClicked();

    /// The pointer is over the plot area, also while the graph is disabled, or it has left it; again when what is shown
    /// changes under it.
    void pointerAt(double x, double y);
    void pointerLeft();

    /// The context menu was asked for by key, or by the right button where that does not zoom (with Shift it never
    /// does).
    void menuRequested(const QPoint& globalPosition);

  protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void updateLayout() override;
    void processRectZoom(QRect rect, QMouseEvent* event) override;

  private:
    GraphAxis& axis(Axis which) const;
    AxisRange plottedTime() const;
    Extent plottedVolts() const;
    QString description() const;
    void showChange();
    void applyPalette();
    void reserveMargins();
    bool fitTexts();
    bool reportsEvents() const;
    QPointF insideView(const QPointF& place) const;
    void reportPointer();
    void endPress(int button, const QPointF& place);

    GraphAxis* m_timeAxis;
    GraphAxis* m_voltageAxis;
    std::vector<TracePlottable*> m_plots; ///< owned by the plot
    QCPItemText* m_emptyText;
    QCPItemText* m_strip; ///< shows the note
    QString m_note;
    std::shared_ptr<const TrialPyramid> m_pyramid;
    double m_sampleIntervalSeconds = 1;
    double m_valueFactor = 1;
    int m_trackMode = 1;
    std::optional<QPointF> m_pointer; ///< where it is over the widget
    bool m_pressReported = false;     ///< the release is due, whatever the mode is by then
};

} // namespace tavex2
