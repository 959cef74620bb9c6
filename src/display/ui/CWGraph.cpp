#include "display/ui/CWGraph.h"

#include "display/TraceColours.h"
#include "display/ui/GraphAxis.h"
#include "display/ui/TracePlottable.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace tavex2 {

namespace {

constexpr QColor gridColour(0xDC, 0xDC, 0xDC);
constexpr QColor hintColour(0x6E, 0x6E, 0x6E);

// Tracking modes in which the library itself follows the mouse, and the one that reports to the program.
constexpr int modeEvents = 1;
constexpr int modePan = 3;
constexpr int modeZoomArea = 6;

QString rangeText(double from, double to, const char* unit) {
    return QStringLiteral("%1 to %2 %3")
        .arg(QString::number(from, 'g', 4), QString::number(to, 'g', 4), QLatin1String(unit));
}

} // namespace

CWGraph::CWGraph(QWidget* parent)
    : QCustomPlot(parent), m_timeAxis(new GraphAxis(xAxis)), m_voltageAxis(new GraphAxis(yAxis)),
      m_emptyText(new QCPItemText(this)), m_note(new QCPItemText(this)) {
    setFocusPolicy(Qt::StrongFocus);
    for (int position = 0; position < traceColourCount; ++position)
        m_plots.push_back(new TracePlottable(xAxis, yAxis, position));

    QCPAxisRect& area = *axisRect();
    area.setBackground(QBrush(Qt::white));
    area.setupFullAxesBox();
    // One pixel outside, so that the frame hides neither the first nor the last column of a trace.
    for (QCPAxis* each : {xAxis, yAxis, xAxis2, yAxis2})
        each->setOffset(1);
    for (QCPAxis* each : {xAxis2, yAxis2}) {
        each->setTicks(false);
        each->setSubTicks(false);
    }
    for (QCPAxis* each : {xAxis, yAxis}) {
        // Outward, because the plot area stays white where the palette may make ticks white too.
        each->setTickLength(0, 5);
        each->setSubTickLength(0, 2);
        each->grid()->setPen(QPen(gridColour, 0, Qt::DotLine));
        each->grid()->setZeroLinePen(QPen(gridColour.darker(120), 0, Qt::SolidLine));
    }
    xAxis->grid()->setZeroLinePen(Qt::NoPen);

    for (QCPItemText* text : {m_emptyText, m_note}) {
        text->setSelectable(false);
        text->position->setType(QCPItemPosition::ptAxisRectRatio);
        text->setColor(hintColour);
        text->setBrush(QBrush(Qt::white));
        text->setPadding(QMargins(8, 4, 8, 4));
        text->setText(QString());
    }
    m_emptyText->setPositionAlignment(Qt::AlignCenter);
    m_emptyText->position->setCoords(0.5, 0.5);
    m_note->setPositionAlignment(Qt::AlignTop | Qt::AlignRight);
    m_note->position->setCoords(0.995, 0.015);
    m_note->setPen(QPen(hintColour));
    m_note->setLayer(QStringLiteral("legend")); // above the traces

    m_timeAxis->setLimits(0, 1);
    m_voltageAxis->setLimits(-10, 10);
    for (const GraphAxis* each : {m_timeAxis, m_voltageAxis}) {
        connect(each, &GraphAxis::changed, this, &CWGraph::showChange);
        connect(each, &GraphAxis::dragged, this, &CWGraph::viewDragged);
    }
    applyPalette();
    showChange();
}

CWGraph::~CWGraph() = default;

void CWGraph::plot(const TrialData& trial, double sampleIntervalSeconds, double valueFactor) {
    const bool shown = m_pyramid && m_pyramid->trial() == trial;
    plot(shown ? m_pyramid : std::make_shared<const TrialPyramid>(trial), sampleIntervalSeconds, valueFactor);
}

void CWGraph::plot(std::shared_ptr<const TrialPyramid> pyramid, double sampleIntervalSeconds, double valueFactor) {
    if (!pyramid || pyramid->channels() == 0) {
        clearPlots();
        return;
    }
    m_pyramid = std::move(pyramid);
    m_sampleIntervalSeconds = sampleIntervalSeconds;
    m_valueFactor = valueFactor;
    const int channels = m_pyramid->channels();
    while (static_cast<int>(m_plots.size()) < channels)
        m_plots.push_back(new TracePlottable(xAxis, yAxis, static_cast<int>(m_plots.size())));
    for (int position = 0; position < static_cast<int>(m_plots.size()); ++position) {
        TracePlottable& plot = *m_plots[static_cast<std::size_t>(position)];
        if (position < channels)
            plot.setTrace(m_pyramid, position, sampleIntervalSeconds, valueFactor);
        else
            plot.clearTrace();
    }
    for (const Axis which : {Axis::Time, Axis::Voltage})
        if (autoScale(which)) rescaleOnce(which);
    showChange();
}

void CWGraph::clearPlots() {
    m_pyramid.reset();
    for (TracePlottable* plot : m_plots)
        plot->clearTrace();
    showChange();
}

int CWGraph::plotCount() const {
    return m_pyramid ? m_pyramid->channels() : 0;
}

GraphAxis& CWGraph::axis(Axis which) const {
    return which == Axis::Time ? *m_timeAxis : *m_voltageAxis;
}

double CWGraph::axisMinimum(Axis which) const {
    return axis(which).minimum();
}
double CWGraph::axisMaximum(Axis which) const {
    return axis(which).maximum();
}
void CWGraph::setAxisMinimum(Axis which, double minimum) {
    axis(which).setLimits(minimum, axis(which).maximum());
}
void CWGraph::setAxisMaximum(Axis which, double maximum) {
    axis(which).setLimits(axis(which).minimum(), maximum);
}
void CWGraph::setAxisRange(Axis which, double minimum, double maximum) {
    axis(which).setLimits(minimum, maximum);
}

bool CWGraph::autoScale(Axis which) const {
    return axis(which).autoScale();
}

void CWGraph::setAutoScale(Axis which, bool on) {
    axis(which).setAutoScale(on);
    if (on) rescaleOnce(which);
}

void CWGraph::rescaleOnce(Axis which) {
    if (!m_pyramid) return;
    const auto range = which == Axis::Time ? plottedTime() : voltageRange(plottedVolts());
    if (range) axis(which).setLimits(range->minimum, range->maximum);
}

QString CWGraph::axisCaption(Axis which) const {
    return axis(which).caption();
}

void CWGraph::setAxisCaption(Axis which, const QString& caption) {
    axis(which).setCaption(caption);
    showChange();
}

void CWGraph::setAxisCaption(Axis which, const std::string& caption) {
    setAxisCaption(which, QString::fromStdString(caption));
}

QString CWGraph::labelScaleExpression(Axis which) const {
    return axis(which).labelScaleExpression();
}

void CWGraph::setLabelScaleExpression(Axis which, const QString& expression) {
    axis(which).setLabelScaleExpression(expression);
}

void CWGraph::setLabelScaleExpression(Axis which, const std::string& expression) {
    setLabelScaleExpression(which, QString::fromStdString(expression));
}

QString CWGraph::emptyText() const {
    return m_emptyText->text();
}

void CWGraph::setEmptyText(const QString& text) {
    m_emptyText->setText(text);
    showChange();
}

QString CWGraph::note() const {
    return m_note->text();
}

void CWGraph::setRemark(const QString& text) {
    if (text == toolTip()) return;
    setToolTip(text);
    showChange();
}

void CWGraph::setNote(const QString& text) {
    m_note->setText(text);
    showChange();
}

AxisRange CWGraph::plottedTime() const {
    return timeRange(m_pyramid->samples(), m_sampleIntervalSeconds);
}

Extent CWGraph::plottedVolts() const {
    const Extent& whole = m_pyramid->whole();
    return whole.empty() ? whole : Extent{whole.lowest * m_valueFactor, whole.highest * m_valueFactor};
}

/// What the graph shows in words: the data, and the view where it leaves out a part of them.
QString CWGraph::description() const {
    const QString subject = accessibleName().isEmpty() ? QString() : accessibleName() + QStringLiteral(": ");
    if (!m_pyramid) return subject + QStringLiteral("no data");

    const int channels = m_pyramid->channels();
    const AxisRange time = plottedTime();
    const Extent volts = plottedVolts();
    QString text = subject + (note().isEmpty() ? QString() : note() + QStringLiteral(": ")) +
                   QStringLiteral("%1 %2 of %3 samples, time %4")
                       .arg(channels)
                       .arg(channels == 1 ? QStringLiteral("channel") : QStringLiteral("channels"))
                       .arg(m_pyramid->samples())
                       .arg(rangeText(time.minimum, time.maximum, "s"));
    if (!volts.empty()) text += QStringLiteral(", voltage ") + rangeText(volts.lowest, volts.highest, "V");
    const bool partly = xMinimum() > time.minimum || xMaximum() < time.maximum ||
                        (!volts.empty() && (yMinimum() > volts.lowest || yMaximum() < volts.highest));
    if (partly)
        text += QStringLiteral("; in view: time %1, voltage %2")
                    .arg(rangeText(xMinimum(), xMaximum(), "s"), rangeText(yMinimum(), yMaximum(), "V"));
    return text;
}

void CWGraph::showChange() {
    m_emptyText->setVisible(!m_pyramid && !emptyText().isEmpty());
    m_note->setVisible(!note().isEmpty());
    setAccessibleDescription(toolTip().isEmpty() ? description() : description() + QLatin1Char(' ') + toolTip());
    if (m_pointer) reportPointer();
    replot(rpQueuedReplot);
}

// Mouse ---------------------------------------------------------------------------------------------------------------

void CWGraph::setTrackMode(int mode) {
    m_trackMode = mode;
    setInteraction(QCP::iRangeDrag, mode == modePan);
    setSelectionRectMode(mode == modeZoomArea ? QCP::srmZoom : QCP::srmNone);
    switch (mode) {
    case modeEvents:
        setCursor(Qt::PointingHandCursor);
        break;
    case modePan:
        setCursor(Qt::OpenHandCursor);
        break;
    case modeZoomArea:
        setCursor(Qt::CrossCursor);
        break;
    default:
        unsetCursor();
    }
}

/// With Shift the right button asks for the menu instead of zooming.
bool CWGraph::reportsEvents(Qt::KeyboardModifiers modifiers) const {
    return isEnabled() && m_trackMode == modeEvents && !modifiers.testFlag(Qt::ShiftModifier);
}

QPointF CWGraph::insideView(const QPointF& place) const {
    const QRectF area = axisRect()->rect();
    return {std::clamp(place.x(), area.left(), area.right()), std::clamp(place.y(), area.top(), area.bottom())};
}

void CWGraph::reportPointer() {
    if (m_pointer && axisRect()->rect().contains(m_pointer->toPoint()))
        Q_EMIT pointerAt(timeAt(*m_pointer), voltsAt(*m_pointer));
    else
        Q_EMIT pointerLeft();
}

/// Sees what a disabled widget is not told any more.
bool CWGraph::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseMove:
        m_pointer = static_cast<QMouseEvent*>(event)->position();
        reportPointer();
        break;
    case QEvent::Leave:
        m_pointer.reset();
        reportPointer();
        break;
    case QEvent::EnabledChange:
    case QEvent::WindowDeactivate: // the release will not come, or go to another window
        endPress(0, axisRect()->center());
        break;
    case QEvent::ContextMenu: {
        const auto* asked = static_cast<QContextMenuEvent*>(event);
        if (asked->reason() != QContextMenuEvent::Mouse || !reportsEvents(asked->modifiers()))
            Q_EMIT menuRequested(asked->globalPos());
        event->accept();
        return true;
    }
    default:
        break;
    }
    return QCustomPlot::event(event);
}

void CWGraph::mousePressEvent(QMouseEvent* event) {
    if (m_trackMode == modePan || m_trackMode == modeZoomArea) {
        if (event->button() == Qt::LeftButton) QCustomPlot::mousePressEvent(event);
        return;
    }
    if (!reportsEvents(event->modifiers()) || !axisRect()->rect().contains(event->position().toPoint())) return;
    m_pressReported = true;
    Q_EMIT mouseDown(static_cast<int>(event->button()), timeAt(event->position()), voltsAt(event->position()));
}

void CWGraph::mouseMoveEvent(QMouseEvent* event) {
    if (m_pressReported) {
        const QPointF place = insideView(event->position());
        Q_EMIT mouseMoved(static_cast<int>(event->buttons()), timeAt(place), voltsAt(place));
    } else {
        QCustomPlot::mouseMoveEvent(event);
    }
}

void CWGraph::mouseReleaseEvent(QMouseEvent* event) {
    if (m_pressReported)
        endPress(static_cast<int>(event->button()), insideView(event->position()));
    else
        QCustomPlot::mouseReleaseEvent(event);
}

void CWGraph::endPress(int button, const QPointF& place) {
    if (std::exchange(m_pressReported, false)) Q_EMIT mouseUp(button, timeAt(place), voltsAt(place));
}

void CWGraph::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Q_EMIT doubleClicked();
}

void CWGraph::wheelEvent(QWheelEvent* event) {
    constexpr double eighthsOfADegree = 120; // of one notch
    const QPointF place = insideView(event->position());
    const double notches = event->angleDelta().y() / eighthsOfADegree;
    if (notches != 0) Q_EMIT wheelTurned(notches, timeAt(place), voltsAt(place));
    event->accept();
}

// Appearance ----------------------------------------------------------------------------------------------------------

void CWGraph::changeEvent(QEvent* event) {
    QCustomPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange ||
        event->type() == QEvent::StyleChange) {
        applyPalette();
        replot(rpQueuedReplot);
    }
}

/// Always with the colours of an active window: being disabled only means that the mouse does nothing.
void CWGraph::applyPalette() {
    const QColor text = palette().color(QPalette::Active, QPalette::WindowText);
    setBackground(QBrush(palette().color(QPalette::Active, QPalette::Window)));
    for (GraphAxis* each : {m_timeAxis, m_voltageAxis})
        each->setStyle(text, font());
    for (QCPAxis* opposite : {xAxis2, yAxis2})
        opposite->setBasePen(QPen(text));
    for (QCPItemText* each : {m_emptyText, m_note})
        each->setFont(font());

    // Numbers of usual width leave the plot areas of graphs above each other aligned.
    const QFontMetrics metrics(font());
    const int numbers = metrics.horizontalAdvance(QStringLiteral("-0000.0"));
    const int above =
        std::max(8, metrics.height() / 2 + 2); // half of the number at the top, which would be left out else
    axisRect()->setMinimumMargins(QMargins(numbers + metrics.height() + 20, above, numbers / 2, 0));
}

void CWGraph::paintEvent(QPaintEvent* event) {
    QCustomPlot::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Active, QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace tavex2
