#include "analysis/ui/frmOverlay.h"

#include "analysis/Overlays.h"
#include "display/TraceColours.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPainter>
#include <QPixmap>

namespace tavex2 {

namespace {

QIcon swatch(int position) {
    const auto colour = [](Rgb rgb) { return QColor(rgb.red, rgb.green, rgb.blue); };
    QPixmap picture(24, 12);
    picture.fill(colour(traceColour(position)));
    QPainter(&picture).drawRect(picture.rect().adjusted(0, 0, -1, -1));
    return picture;
}

} // namespace

frmOverlay::frmOverlay(const ProgramState& state, const CWGraph& mainGraph, QWidget* mainWindow)
    : MeasuringForm(QStringLiteral("frmOverlay"), tr("Overlays"), mainWindow), m_overlays(state.overlays),
      m_header(state.overlays.OverlayData.front()->header), m_average(new QCheckBox(tr("Average"), this)) {
    m_average->setObjectName(QStringLiteral("chkAverage"));
    m_average->setToolTip(tr("Show and measure the average of the overlaid trials"));
    connect(m_average, &QCheckBox::toggled, this, [this] { chkAverage_Click(); });
    choices().insertWidget(1, m_average);
    setTabOrder(findChild<QWidget*>(QStringLiteral("cbChannels")), m_average);
    addNames();
    fillChannels(m_overlays.OverlaySettings.NumChannels, m_header);
    chkAverage_Click();
    takeLimits(mainGraph);
    putCursorsAtEnds(rateHz());
    CursorChange();
}

void frmOverlay::addNames() {
    auto* names = new QListWidget(this);
    names->setObjectName(QStringLiteral("lstNames"));
    names->setAccessibleName(tr("Overlaid trials"));
    names->setToolTip(tr("The overlaid trials and their colours"));
    names->setSelectionMode(QAbstractItemView::NoSelection);
    names->setIconSize(QSize(24, 12));
    for (int k = 0; k < m_overlays.OverlayCount; ++k)
        names->addItem(new QListWidgetItem(
            swatch(k), QString::fromStdString(m_overlays.OverlayData[static_cast<std::size_t>(k)]->name)));
    names->setFixedWidth(names->sizeHintForColumn(0) + 2 * names->frameWidth() + 8);
    middle().addWidget(names);
}

bool frmOverlay::averaged() const {
    return m_average->isChecked();
}

void frmOverlay::chkAverage_Click() {
    showReadings(averaged());
    cbChannels_Click();
}

void frmOverlay::cbChannels_Click() {
    plot(BuildPlotData(m_overlays, channel(), averaged(), rectified()), rateHz());
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
        lines.push_back(lineOf(averaged() ? "Average of " + std::to_string(m_overlays.OverlayCount)
                                          : m_overlays.OverlayData[static_cast<std::size_t>(row)]->name,
                               channel, m_header,
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
