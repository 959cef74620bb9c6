#pragma once

#include "acquisition/records/TrialBuffers.h"
#include "display/AxisRange.h"
#include "display/TrialPyramid.h"
#include "display/ui/QCustomPlotLibrary.h"

#include <QString>

#include <memory>
#include <vector>

namespace tavex2 {

class GraphAxis;
class TracePlottable;

/// The graph control: traces of a trial over time (seconds) and voltage (volts).
///
/// The plot area is white under every palette, because the first trace is black; all around it follows the palette and
/// looks the same while the graph is disabled. Changes show at the next turn of the event loop, properties at once.
/// Lives on the user-interface thread; TrialGraphs fills the three of the main window.
class CWGraph : public QCustomPlot {
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
    /// The axes by their numbers: "XAxis" and "YAxis-1".
    enum class Axis { Time = 1, Voltage = 2 };

    explicit CWGraph(QWidget* parent = nullptr);
    ~CWGraph() override;

    /// Shows a trial from x = 0, one plot per channel, in place of what was shown. Each value is multiplied by
    /// `valueFactor` (above 0). Axes with autoscaling on follow. A trial that is shown already is not read again; no or
    /// an empty trial shows nothing.
    void plot(const TrialData& trial, double sampleIntervalSeconds, double valueFactor = 1.0);
    /// The same for a trial whose pyramid exists.
    void plot(std::shared_ptr<const TrialPyramid> pyramid, double sampleIntervalSeconds, double valueFactor = 1.0);
    void clearPlots();

    /// What is shown; null for nothing.
    const std::shared_ptr<const TrialPyramid>& pyramid() const { return m_pyramid; }
    /// Number of traces shown.
    int plotCount() const;

    double axisMinimum(Axis axis) const;
    double axisMaximum(Axis axis) const;
    void setAxisMinimum(Axis axis, double minimum);
    void setAxisMaximum(Axis axis, double maximum);
    /// Limits are taken as they are, the wrong way round and without extent too; values that are no finite number are
    /// ignored.
    void setAxisRange(Axis axis, double minimum, double maximum);

    /// With autoscaling on the axis rescales itself whenever something is plotted. Off at first.
    void setAutoScale(Axis axis, bool on);
    bool autoScale(Axis axis) const;
    /// Fits the axis to the plotted data; without data it stays.
    void rescaleOnce(Axis axis);

    QString axisCaption(Axis axis) const;
    void setAxisCaption(Axis axis, const QString& caption);

    /// Only the numbers at the ticks are scaled: "" and "*1" show them as they are, "*1000" a thousand times.
    QString labelScaleExpression(Axis axis) const;
    void setLabelScaleExpression(Axis axis, const QString& expression);

    /// Text in the middle of a graph that shows nothing.
    QString emptyText() const;
    void setEmptyText(const QString& text);

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

    /// The mouse-tracking mode, a number of the graph control.
    int trackMode() const { return m_trackMode; }
    void setTrackMode(int mode) { m_trackMode = mode; }

  protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    GraphAxis& axis(Axis which) const;
    AxisRange plottedTime() const;
    Extent plottedVolts() const;
    QString description() const;
    void showChange();
    void applyPalette();

    GraphAxis* m_timeAxis;
    GraphAxis* m_voltageAxis;
    std::vector<TracePlottable*> m_plots; ///< owned by the plot
    QCPItemText* m_emptyText;
    std::shared_ptr<const TrialPyramid> m_pyramid;
    double m_sampleIntervalSeconds = 1;
    double m_valueFactor = 1;
    int m_trackMode = 1;
};

} // namespace tavex2
