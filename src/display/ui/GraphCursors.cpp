#include "display/ui/GraphCursors.h"

#include "display/CursorPlace.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>

namespace tavex2 {

namespace {

constexpr double grabPixels = 6;
constexpr int leftButton = 1;
constexpr std::array<Qt::PenStyle, 2> styles{Qt::SolidLine, Qt::DashLine};
const QColor cursorColour(0x00, 0x5A, 0x9E);

QCPLayer* layerAbove(QCustomPlot& graph) {
    const QString name = QStringLiteral("cursors");
    graph.addLayer(name, graph.layer(QStringLiteral("legend")), QCustomPlot::limBelow);
    QCPLayer* layer = graph.layer(name);
    layer->setMode(QCPLayer::lmBuffered); // drawn without the traces
    return layer;
}

} // namespace

GraphCursors::GraphCursors(CWGraph& graph)
    : QObject(&graph), m_graph(graph), m_layer(layerAbove(graph)), m_lines{makeLine(0), makeLine(1)} {
    graph.setTrackMode(1);
    graph.installEventFilter(this);
    connect(&graph, &CWGraph::mouseDown, this, [this](int button, double x) {
        if (button == leftButton) grabAt(x);
    });
    connect(&graph, &CWGraph::mouseMoved, this, [this](int buttons, double x) {
        if ((buttons & leftButton) != 0) drag(x);
    });
    connect(graph.xAxis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, &GraphCursors::show);
    connect(&graph, &CWGraph::pointerAt, this, [this](double x) {
        const bool near = m_count > 0 && std::min(pixelsFrom(0, x), pixelsFrom(1, x)) <= grabPixels;
        m_graph.setCursor(near ? Qt::SizeHorCursor : Qt::PointingHandCursor);
    });
    show();
}

GraphCursors::Line GraphCursors::makeLine(int cursor) {
    const QString name = QStringLiteral("Cursor-%1").arg(cursor + 1);
    auto* line = new QCPItemStraightLine(&m_graph);
    line->setObjectName(name);
    line->setLayer(m_layer);
    line->setSelectable(false);
    auto* label = new QCPItemText(&m_graph);
    label->setLayer(m_layer);
    label->setSelectable(false);
    label->setText(QString::number(cursor + 1));
    label->setBrush(QBrush(Qt::white));
    label->setPadding(QMargins(3, 0, 3, 0));
    label->position->setTypeX(QCPItemPosition::ptPlotCoords);
    label->position->setTypeY(QCPItemPosition::ptAxisRectRatio);
    return {line, label};
}

void GraphCursors::setSamples(std::int64_t count, double intervalSeconds) {
    m_count = count;
    m_intervalSeconds = intervalSeconds;
    for (std::int64_t& sample : m_samples)
        sample = inside(sample);
    show();
}

std::int64_t GraphCursors::inside(std::int64_t sample) const {
    return std::clamp<std::int64_t>(sample, 0, std::max<std::int64_t>(m_count, 1) - 1);
}

void GraphCursors::setSample(int cursor, std::int64_t sample) {
    m_samples[static_cast<std::size_t>(cursor)] = inside(sample);
    show();
}

double GraphCursors::pixelsFrom(int cursor, double x) const {
    return std::abs(m_graph.xAxis->coordToPixel(seconds(cursor)) - m_graph.xAxis->coordToPixel(x));
}

void GraphCursors::grabAt(double x) {
    if (m_count == 0) return;
    const double first = pixelsFrom(0, x);
    const double second = pixelsFrom(1, x);
    // Where both lie together, the side of the pointer says which one is meant: they come apart without crossing.
    if (std::abs(first - second) < 0.5)
        mark((sample(0) <= sample(1)) == (x < seconds(0)) ? 0 : 1);
    else
        mark(first < second ? 0 : 1);
    m_grabOffset = pixelsFrom(m_marked, x) <= grabPixels ? seconds(m_marked) - x : 0;
    drag(x);
}

/// The first of the two clicks has brought a cursor.
void GraphCursors::takeDoubleClick() {
    const bool back = m_samples != m_samplesAtPress;
    m_samples = m_samplesAtPress;
    mark(m_markedAtPress);
    if (back) Q_EMIT moved();
    Q_EMIT doubleClicked();
}

void GraphCursors::drag(double x) {
    if (m_count == 0) return;
    const std::int64_t before = sample(m_marked);
    setSample(m_marked, nearestSample(x + m_grabOffset, 1.0 / m_intervalSeconds, m_count));
    if (sample(m_marked) != before) Q_EMIT moved();
}

bool GraphCursors::keyPressed(const QKeyEvent& event) {
    const auto viewSamples = static_cast<std::int64_t>((m_graph.xMaximum() - m_graph.xMinimum()) / m_intervalSeconds);
    const std::int64_t step = event.modifiers().testFlag(Qt::ControlModifier)
                                  ? std::max<std::int64_t>(viewSamples / 50, 1)
                              : event.modifiers().testFlag(Qt::ShiftModifier) ? 10
                                                                              : 1;
    std::int64_t place = sample(m_marked);
    switch (event.key()) {
    case Qt::Key_Left:
        place -= step;
        break;
    case Qt::Key_Right:
        place += step;
        break;
    case Qt::Key_Home:
        place = 0;
        break;
    case Qt::Key_End:
        place = m_count - 1;
        break;
    case Qt::Key_1:
    case Qt::Key_2:
        mark(event.key() == Qt::Key_1 ? 0 : 1);
        return true;
    default:
        return false;
    }
    setSample(m_marked, place);
    Q_EMIT moved();
    return true;
}

bool GraphCursors::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && m_count > 0 && keyPressed(static_cast<QKeyEvent&>(*event))) return true;
    if (event->type() == QEvent::MouseButtonPress) {
        m_samplesAtPress = m_samples;
        m_markedAtPress = m_marked;
    }
    if (event->type() == QEvent::MouseButtonDblClick) {
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) takeDoubleClick();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void GraphCursors::mark(int cursor) {
    m_marked = cursor;
    show();
}

void GraphCursors::show() {
    const double middle = (m_graph.xMinimum() + m_graph.xMaximum()) / 2;
    for (int cursor : {0, 1}) {
        const Line& each = m_lines[static_cast<std::size_t>(cursor)];
        const double x = seconds(cursor);
        const QPen pen(cursorColour, cursor == m_marked ? 2 : 1, styles[static_cast<std::size_t>(cursor)]);
        each.line->point1->setCoords(x, 0);
        each.line->point2->setCoords(x, 1);
        each.line->setPen(pen);
        each.line->setVisible(m_count > 0);
        each.label->position->setCoords(x, 0.01 + 0.07 * cursor); // one below the other where they meet
        // On the side where the view has more room for it.
        each.label->setPositionAlignment(Qt::AlignTop | (x < middle ? Qt::AlignLeft : Qt::AlignRight));
        each.label->setPen(QPen(cursorColour, cursor == m_marked ? 2 : 1));
        each.label->setColor(cursorColour);
        each.label->setVisible(m_count > 0);
    }
    m_layer->replot();
}

} // namespace tavex2
