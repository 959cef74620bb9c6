#include "display/ui/CWGraph.h"

#include "base/Decimal.h"
#include "display/TraceColours.h"
#include "display/ui/GraphAxis.h"
#include "display/ui/ImageBuffer.h"
#include "display/ui/PixelTraces.h"
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
constexpr int stripGap = 3; ///< pixels between a note and the plot area

// Tracking modes in which the library itself follows the mouse, and the one that reports to the program.
constexpr int modeEvents = 1;
constexpr int modePan = 3;
constexpr int modeZoomArea = 6;

/// With Shift the right button asks for the menu instead of zooming.
bool asksForMenu(Qt::KeyboardModifiers modifiers) {
    return modifiers.testFlag(Qt::ShiftModifier);
}

QString rangeText(double from, double to, const char* unit) {
    constexpr int digits = 4;
    return QString::fromStdString(generalDecimal(from, digits) + " to " + generalDecimal(to, digits) + " " + unit);
}

} // namespace

CWGraph::CWGraph(QWidget* parent)
    : QCustomPlot(parent), m_timeAxis(new GraphAxis(xAxis)), m_voltageAxis(new GraphAxis(yAxis)),
      m_emptyText(new QCPItemText(this)), m_strip(new QCPItemText(this)) {
    setFocusPolicy(Qt::StrongFocus);
    for (int position = 0; position < traceColourCount; ++position)
        m_plots.push_back(new TracePlottable(xAxis, yAxis, position));
    addLayer(QStringLiteral("traces"), layer(QStringLiteral("main")));
    (new PixelTraces(*this, m_plots))->setLayer(QStringLiteral("traces")); // owned by the plot

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

    for (QCPItemText* text : {m_emptyText, m_strip}) {
        text->setSelectable(false);
        text->position->setType(QCPItemPosition::ptAxisRectRatio);
        text->setText(QString());
    }
    m_emptyText->setColor(hintColour);
    m_emptyText->setBrush(QBrush(Qt::white));
    m_emptyText->setPadding(QMargins(8, 4, 8, 4));
    m_emptyText->setPositionAlignment(Qt::AlignCenter);
    m_emptyText->position->setCoords(0.5, 0.5);
    m_strip->setClipToAxisRect(false);
    m_strip->setPadding(QMargins(0, 0, 0, stripGap));
    m_strip->setPositionAlignment(Qt::AlignBottom | Qt::AlignRight);
    m_strip->position->setCoords(1, 0);

    // The library keeps the buffers that it finds; a layer's first picture is drawn into one of its own.
    connect(this, &QCustomPlot::beforeReplot, this, [this] {
        for (QSharedPointer<QCPAbstractPaintBuffer>& buffer : mPaintBuffers)
            if (!buffer.dynamicCast<ImageBuffer>())
                buffer.reset(new ImageBuffer(viewport().size(), bufferDevicePixelRatio()));
    });

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

void CWGraph::setTraceColour(int position, const std::optional<Rgb>& colour) {
    m_plots[static_cast<std::size_t>(position)]->setColour(colour.value_or(traceColour(position)));
    replot(rpQueuedReplot);
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

void CWGraph::setRemark(const QString& text) {
    if (text == toolTip()) return;
    setToolTip(text);
    showChange();
}

void CWGraph::setNote(const QString& text) {
    m_note = text;
    reserveMargins();
    showChange();
}

AxisRange CWGraph::plottedTime() const {
    return timeRange(m_pyramid->samples(), m_sampleIntervalSeconds);
}

Extent CWGraph::plottedVolts() const {
    const Extent& whole = m_pyramid->finite();
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
    m_strip->setVisible(!note().isEmpty());
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

bool CWGraph::reportsEvents() const {
    return isEnabled() && m_trackMode == modeEvents;
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
        if (asked->reason() != QContextMenuEvent::Mouse || !reportsEvents() || asksForMenu(asked->modifiers()))
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
    if (!reportsEvents() || !axisRect()->rect().contains(event->position().toPoint())) return;
    if (event->button() == Qt::RightButton && asksForMenu(event->modifiers())) return;
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
    if (reportsEvents())
        mousePressEvent(event);
    else if (event->button() == Qt::LeftButton)
        Q_EMIT doubleClicked();
}

/// A rectangle that began or ended beside the plot area is cut at its edge. One too flat to be meant is left out.
void CWGraph::processRectZoom(QRect rect, QMouseEvent* event) {
    constexpr int flattest = 4; // pixels
    const QRect inside = rect.normalized() & axisRect()->rect();
    if (inside.width() >= flattest && inside.height() >= flattest) QCustomPlot::processRectZoom(inside, event);
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
    for (QCPItemText* each : {m_emptyText, m_strip})
        each->setFont(font());
    m_strip->setColor(text);
    reserveMargins();
}

void CWGraph::reserveMargins() {
    const QFontMetrics metrics(font());
    // Numbers of usual width leave the plot areas of graphs above each other aligned.
    const int numbers = metrics.horizontalAdvance(QStringLiteral("-0000.0"));
    const int halfNumber = metrics.height() / 2 + 2; // the upper half of the one at the top
    const int strip = note().isEmpty() ? 0 : metrics.height() + stripGap + 2;
    axisRect()->setMinimumMargins(
        QMargins(numbers + metrics.height() + 20, std::max({8, halfNumber, strip}), numbers / 2, 0));
}

/// Texts can be suited to their room only when it is known.
void CWGraph::updateLayout() {
    QCustomPlot::updateLayout();
    if (fitTexts()) QCustomPlot::updateLayout();
}

/// True when the room has changed. A caption is centred on its axis and may reach into the margins.
bool CWGraph::fitTexts() {
    const QRect area = axisRect()->rect();
    const QRect whole = viewport();
    const int beside = std::min(area.left() - whole.left(), whole.right() - area.right());
    const int around = std::min(area.top() - whole.top(), whole.bottom() - area.bottom());
    m_strip->setText(QFontMetrics(font()).elidedText(note(), Qt::ElideRight, area.width()));
    const bool timeChanged = m_timeAxis->fit(area.width(), area.width() + 2 * beside);
    return m_voltageAxis->fit(area.height(), area.height() + 2 * around) || timeChanged;
}

void CWGraph::paintEvent(QPaintEvent* event) {
    QCustomPlot::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Active, QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace tavex2
