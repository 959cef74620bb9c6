#include "analysis/ui/MeasuringForm.h"

#include "base/Windows1252.h"
#include "display/CursorPlace.h"
#include "display/Zoom.h"
#include "platform/qt/CenterForm.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

#include <cmath>

namespace tavex2 {

namespace {

constexpr QSize startSize(820, 560);

} // namespace

MeasuringForm::MeasuringForm(const QString& name, const QString& caption, QWidget* mainWindow)
    : QDialog(mainWindow, Qt::Window), m_channels(new QComboBox(this)), m_rectify(new QCheckBox(tr("Rectify"), this)),
      m_graph(new CWGraph(this)), m_cursors(new GraphCursors(*m_graph)), m_choices(new QHBoxLayout),
      m_middle(new QHBoxLayout), m_status(new QStatusBar(this)) {
    setObjectName(name);
    setWindowTitle(caption);

    m_channels->setObjectName(QStringLiteral("cbChannels"));
    m_channels->setAccessibleName(tr("Channel"));
    m_channels->setToolTip(tr("The channel that is shown and measured"));
    m_channels->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(m_channels, &QComboBox::currentIndexChanged, this, [this] { cbChannels_Click(); });
    m_rectify->setObjectName(QStringLiteral("chkRectify"));
    m_rectify->setToolTip(tr("Show and measure the absolute value of every sample"));
    connect(m_rectify, &QCheckBox::toggled, this, [this] { cbChannels_Click(); });
    leaveKeysToGraph(*m_channels);
    leaveKeysToGraph(*m_rectify);
    m_choices->addWidget(m_channels);
    m_choices->addWidget(m_rectify);

    auto* readings = new QGridLayout;
    addReadings(*readings);
    addGraph();
    m_status->setObjectName(QStringLiteral("StatusBar"));
    m_status->setSizeGripEnabled(false);
    tell(tr("Drag a cursor, or click to bring the nearer one; keys 1 and 2 choose one, arrows move it (Shift: ten "
            "samples). The wheel zooms."));

    auto* whole = new QVBoxLayout(this);
    whole->addLayout(m_choices);
    whole->addLayout(readings);
    whole->addLayout(m_middle, 1);
    whole->addWidget(m_status);
    addCopyButtons();
    resize(startSize.expandedTo(sizeHint()));
}

/// A label, a box and its unit; `name` follows "lbl", "txt" and "unit".
QLineEdit* MeasuringForm::addBox(QGridLayout& grid, int row, int column, const QString& name, const QString& caption,
                                 const QString& unit, const QString& tip) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(QStringLiteral("txt") + name);
    edit->setReadOnly(true);
    edit->setFocusPolicy(Qt::NoFocus); // the copying key is the window's
    edit->setToolTip(tip);
    edit->setAccessibleName(caption);
    edit->setAccessibleDescription(tip);
    auto* text = new QLabel(caption, this);
    text->setObjectName(QStringLiteral("lbl") + name);
    text->setBuddy(edit);
    auto* unitText = new QLabel(unit, this);
    unitText->setObjectName(QStringLiteral("unit") + name);
    grid.addWidget(text, row, 3 * column);
    grid.addWidget(edit, row, 3 * column + 1);
    grid.addWidget(unitText, row, 3 * column + 2);
    return edit;
}

void MeasuringForm::addReadings(QGridLayout& grid) {
    const auto add = [&](int row, int column, const char* name, const QString& caption, const char* unit,
                         const QString& tip) {
        return addBox(grid, row, column, QLatin1String(name), caption, QLatin1String(unit), tip);
    };
    m_left = add(0, 0, "Left", tr("Cursor 1 :"), "s", tr("Time of cursor 1 in seconds"));
    m_right = add(0, 1, "Right", tr("Cursor 2 :"), "s", tr("Time of cursor 2 in seconds"));
    m_interval = add(0, 2, "Interval", tr("Interval :"), "s", tr("Time between the cursors in seconds"));
    m_values = {add(1, 0, "Value1", tr("At cursor 1 :"), "V", tr("Value at cursor 1 in volts")),
                add(1, 1, "Value2", tr("At cursor 2 :"), "V", tr("Value at cursor 2 in volts"))};
    m_integral = add(1, 2, "Integral", tr("Integral :"), "V s", tr("Integral between the cursors in volt-seconds"));
    m_minimum = add(2, 0, "Min", tr("Minimum :"), "V", tr("Lowest value between the cursors in volts"));
    m_maximum = add(2, 1, "Max", tr("Maximum :"), "V", tr("Highest value between the cursors in volts"));
    m_peakToPeak = add(2, 2, "P2P", tr("Peak-to-Peak :"), "V", tr("Maximum less minimum in volts"));
    for (const char* name : {"Value1", "Value2", "Integral", "Min", "Max", "P2P"})
        for (const char* part : {"lbl%1", "txt%1", "unit%1"})
            m_measuring.push_back(findChild<QWidget*>(QLatin1String(part).arg(QLatin1String(name))));
}

void MeasuringForm::leaveKeysToGraph(QWidget& control) {
    control.setFocusPolicy(Qt::TabFocus);
}

void MeasuringForm::addCopyButtons() {
    const auto add = [this](const char* name, const QString& text, const QKeySequence& key, const QString& tip,
                            auto lines) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(QLatin1String(name));
        button->setShortcut(key);
        button->setToolTip(QStringLiteral("%1 (%2)").arg(tip, key.toString(QKeySequence::NativeText)));
        button->setAutoDefault(false);
        leaveKeysToGraph(*button);
        connect(button, &QPushButton::clicked, this, [this, lines] { copy((this->*lines)()); });
        m_choices->addWidget(button);
        return button;
    };
    m_choices->addStretch();
    auto* one = add("cmdCopy", tr("Copy readings"), QKeySequence::Copy,
                    tr("Copy the readings as a table for a spreadsheet"), &MeasuringForm::copiedLines);
    auto* all = add("cmdCopyAll", tr("Copy all channels"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C),
                    tr("Copy the readings of every channel between the same cursors"),
                    &MeasuringForm::copiedLinesOfAllChannels);
    setTabOrder(m_rectify, one);
    setTabOrder(one, all);
    setTabOrder(all, m_graph);
}

void MeasuringForm::addGraph() {
    m_graph->setObjectName(QStringLiteral("cwG"));
    m_graph->setAccessibleName(tr("Channel"));
    m_graph->setAxisCaption(CWGraph::Axis::Time, QStringLiteral("Time"));
    m_graph->setAxisCaption(CWGraph::Axis::Voltage, QStringLiteral("Volts"));
    m_graph->setMinimumSize(300, 200);
    m_middle->addWidget(m_graph, 1);
    connect(m_cursors, &GraphCursors::moved, this, &MeasuringForm::CursorChange);
    connect(m_graph, &CWGraph::wheelTurned, this, [this](double notches, double x, double y) {
        zoomAround(*m_graph, placeInView(*m_graph, x, y), std::pow(zoomNotchFactor, notches));
    });
    connect(m_cursors, &GraphCursors::doubleClicked, this, [this] {
        m_graph->rescaleOnce(CWGraph::Axis::Time);
        m_graph->rescaleOnce(CWGraph::Axis::Voltage);
    });
}

void MeasuringForm::fillChannels(int channels, const LmbHeader& header) {
    const QSignalBlocker quiet(m_channels);
    const LmbHeader defaults;
    for (int each = 0; each < channels; ++each) {
        QString text = QStringLiteral("Channel %1").arg(each);
        if (labelOf(header, each) != labelOf(defaults, each) ||
            channelUnitOf(header, each) != channelUnitOf(defaults, each))
            text += QStringLiteral("  %1 (%2)")
                        .arg(QString::fromStdString(utf8FromWindows1252(labelOf(header, each))),
                             QString::fromStdString(utf8FromWindows1252(channelUnitOf(header, each))));
        m_channels->addItem(text);
    }
}

int MeasuringForm::channel() const {
    return m_channels->currentIndex();
}

bool MeasuringForm::rectified() const {
    return m_rectify->isChecked();
}

void MeasuringForm::plot(const Result<TrialData>& rows, double rateHz) {
    if (!rows || !(rateHz > 0)) {
        m_graph->clearPlots();
        m_cursors->setSamples(0, 1);
        tell(rows ? tr("The trial has no sampling rate.") : QString::fromStdString(rows.error().text));
        return;
    }
    m_graph->plot(rows.value(), 1.0 / rateHz);
    m_cursors->setSamples(rows.value()->samples(), 1.0 / rateHz);
}

void MeasuringForm::takeLimits(const CWGraph& mainGraph) {
    for (const CWGraph::Axis axis : {CWGraph::Axis::Time, CWGraph::Axis::Voltage})
        m_graph->setAxisRange(axis, mainGraph.axisMinimum(axis), mainGraph.axisMaximum(axis));
}

void MeasuringForm::putCursorsAtEnds(double rateHz) {
    if (!m_graph->pyramid() || !(rateHz > 0)) return;
    const std::int64_t samples = m_graph->pyramid()->samples();
    m_cursors->setSample(0, sampleAtOrAfter(m_graph->xMinimum(), rateHz, samples));
    m_cursors->setSample(1, sampleAtOrBefore(m_graph->xMaximum(), rateHz, samples));
}

void MeasuringForm::CursorChange() {
    const bool any = m_graph->plotCount() > 0;
    const ReadingTexts texts = any ? textsOf(m_cursors->seconds(0), m_cursors->seconds(1), measure()) : ReadingTexts();
    const auto show = [](QLineEdit* box, const std::string& text) {
        box->setText(QString::fromStdString(text));
        box->setCursorPosition(0); // where the box is too short, the beginning counts
    };
    show(m_left, texts.cursor1);
    show(m_right, texts.cursor2);
    show(m_interval, texts.interval);
    show(m_minimum, texts.minimum);
    show(m_maximum, texts.maximum);
    show(m_peakToPeak, texts.peakToPeak);
    show(m_integral, texts.integral);
    for (const int cursor : {0, 1})
        show(m_values[static_cast<std::size_t>(cursor)], any ? voltText(valueAt(cursor, 0)) : std::string());
}

double MeasuringForm::valueAt(int cursor, int plot) const {
    return m_graph->pyramid()->channel(plot).sample(m_cursors->sample(cursor));
}

ReadingsLine MeasuringForm::lineOf(const std::string& trial, int channel, const LmbHeader& header,
                                   const std::optional<Readings>& readings) const {
    return readingsLine(trial, header, channel, textsOf(m_cursors->seconds(0), m_cursors->seconds(1), readings));
}

void MeasuringForm::showReadings(bool shown) {
    for (QWidget* each : m_measuring)
        each->setVisible(shown);
}

void MeasuringForm::copy(Result<std::vector<ReadingsLine>> lines) {
    if (!lines) {
        tell(QString::fromStdString(lines.error().text));
        return;
    }
    QApplication::clipboard()->setText(QString::fromStdString(readingsTable(lines.value())));
    tell(lines.value().size() == 1 ? tr("One line of readings is in the clipboard.")
                                   : tr("%1 lines of readings are in the clipboard.").arg(lines.value().size()));
}

void MeasuringForm::tell(const QString& text) {
    m_status->showMessage(text);
    m_status->setToolTip(text);
}

/// The size at which the window opens is its smallest.
void MeasuringForm::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (minimumSize() == size()) return;
    setMinimumSize(size());
    CenterForm(this, parentWidget()->window());
    m_graph->setFocus();
}

} // namespace tavex2
