#include "analysis/ui/frmOverlay.h"

#include "analysis/Overlays.h"
#include "display/ui/ColourSwatch.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QTreeWidget>

namespace tavex2 {

frmOverlay::frmOverlay(const ProgramState& state, const CWGraph& mainGraph, QWidget* mainWindow)
    : MeasuringForm(QStringLiteral("frmOverlay"), tr("Overlays"), mainWindow), m_overlays(state.overlays),
      m_header(state.overlays.OverlayData.front()->header), m_average(new QCheckBox(tr("Average"), this)) {
    m_average->setObjectName(QStringLiteral("chkAverage"));
    m_average->setToolTip(tr("Show and measure the average of the overlaid trials"));
    connect(m_average, &QCheckBox::toggled, this, [this] { chkAverage_Click(); });
    choices().insertWidget(1, m_average);
    leaveKeysToGraph(*m_average);
    setTabOrder(findChild<QWidget*>(QStringLiteral("cbChannels")), m_average);
    addNames();
    fillChannels(m_overlays.OverlaySettings.NumChannels, m_header);
    chkAverage_Click();
    takeLimits(mainGraph);
    putCursorsAtEnds(rateHz());
    CursorChange();
}

void frmOverlay::addNames() {
    m_names = new QTreeWidget(this);
    m_names->setObjectName(QStringLiteral("lstNames"));
    m_names->setAccessibleName(tr("Overlaid trials"));
    m_names->setToolTip(tr("The traces with their colours and their values at the cursors in volts"));
    m_names->setSelectionMode(QAbstractItemView::NoSelection);
    m_names->setRootIsDecorated(false);
    m_names->setIconSize(swatchSize);
    m_names->setHeaderLabels({tr("Trial"), tr("At 1 (V)"), tr("At 2 (V)")});
    m_names->header()->setStretchLastSection(false);
    m_names->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_names->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    m_names->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Expanding);
    leaveKeysToGraph(*m_names);
    middle().addWidget(m_names);
}

/// A line for each trace of the graph.
void frmOverlay::showNames() {
    m_names->clear();
    for (int plot = 0; plot < graph().plotCount(); ++plot) {
        auto* line = new QTreeWidgetItem(m_names);
        line->setText(0, nameOf(plot));
        line->setIcon(0, colourSwatch(averaged() ? averageColour : traceColour(plot)));
        for (const int column : {1, 2})
            line->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
}

QString frmOverlay::nameOf(int plot) const {
    return QString::fromStdString(averaged() ? "Average of " + std::to_string(m_overlays.OverlayCount)
                                             : m_overlays.OverlayData[static_cast<std::size_t>(plot)]->name);
}

void frmOverlay::CursorChange() {
    MeasuringForm::CursorChange();
    for (int plot = 0; plot < m_names->topLevelItemCount(); ++plot)
        for (const int cursor : {0, 1})
            m_names->topLevelItem(plot)->setText(cursor + 1, QString::fromStdString(voltText(valueAt(cursor, plot))));
}

bool frmOverlay::averaged() const {
    return m_average->isChecked();
}

void frmOverlay::chkAverage_Click() {
    showReadings(averaged());
    cbChannels_Click();
}

void frmOverlay::cbChannels_Click() {
    graph().setTraceColour(0, averaged() ? std::optional(averageColour) : std::nullopt);
    plot(BuildPlotData(m_overlays, channel(), averaged(), rectified()), rateHz());
    showNames();
    const bool measured = averaged() && graph().pyramid();
    m_measures = measured ? ChannelMeasures(graph().pyramid(), 0, rateHz()) : ChannelMeasures();
    CursorChange();
}

std::optional<Readings> frmOverlay::measure() const {
    return MeasureBetweenCursors(m_measures, cursors().sample(0), cursors().sample(1));
}

Result<void> frmOverlay::appendLines(int channel, std::vector<ReadingsLine>& lines) const {
    const Result<TrialData> rows = BuildPlotData(m_overlays, channel, averaged(), rectified());
    if (!rows) return rows.error();
    const auto pyramid = std::make_shared<const TrialPyramid>(rows.value());
    for (int row = 0; row < pyramid->channels(); ++row) {
        const ChannelMeasures measures(pyramid, row, rateHz());
        lines.push_back(lineOf(nameOf(row).toStdString(), channel, m_header,
                               MeasureBetweenCursors(measures, cursors().sample(0), cursors().sample(1))));
    }
    return {};
}

Result<std::vector<ReadingsLine>> frmOverlay::copiedLines() {
    std::vector<ReadingsLine> lines;
    if (auto appended = appendLines(channel(), lines); !appended) return appended.error();
    return lines;
}

Result<std::vector<ReadingsLine>> frmOverlay::copiedLinesOfAllChannels() {
    std::vector<ReadingsLine> lines;
    for (int each = 0; each < m_overlays.OverlaySettings.NumChannels; ++each)
        if (auto appended = appendLines(each, lines); !appended) return appended.error();
    return lines;
}

} // namespace tavex2
