#include "display/ui/TrialPicture.h"

#include "base/FileNames.h"
#include "base/PathText.h"
#include "display/AxisRange.h"
#include "display/PictureSize.h"
#include "display/ui/PaperGraph.h"

#include <QFontMetrics>

#include <algorithm>

namespace tavex2 {

namespace {

std::string sizeText(int width, int height) {
    return std::to_string(width) + " x " + std::to_string(height);
}

using Save = Result<void> (*)(CWGraph& graph, const std::filesystem::path& path, int width, int height);

/// What draws a file of that extension; null when nothing does.
Save saverFor(const std::filesystem::path& path) {
    const std::string kind = extensionOf(path);
    if (kind == ".pdf") return saveAsPdf;
    if (kind == ".svg") return saveAsSvg;
    if (kind != ".png") return nullptr;
    return [](CWGraph& graph, const std::filesystem::path& file, int width, int height) {
        return saveAsPng(graph, file, width, height);
    };
}

void addTitle(CWGraph& graph, const QString& title) {
    if (title.isEmpty()) return;
    graph.plotLayout()->insertRow(0);
    QFont font = graph.font();
    font.setBold(true);
    graph.plotLayout()->addElement(0, 0, new QCPTextElement(&graph, title, font));
}

/// Puts the legend into a column of its own to the right of the graph, in as many columns as the height asks for.
void addLegend(CWGraph& graph, const QStringList& channelLabels, int height) {
    QCPLegend& legend = *graph.legend;
    const int lineHeight = QFontMetrics(graph.font()).height();
    legend.setVisible(true);
    legend.setFont(graph.font());
    legend.setBorderPen(Qt::NoPen);
    legend.setIconSize(18, lineHeight);
    legend.setRowSpacing(0);
    legend.setFillOrder(QCPLegend::foRowsFirst);
    legend.setWrap(std::max(1, (height - 6 * lineHeight) / (lineHeight + 1)));
    legend.clearItems();
    for (int channel = 0; channel < graph.plotCount(); ++channel) {
        QCPAbstractPlottable* plot = graph.plottable(channel);
        const QString label = channelLabels.value(channel);
        plot->setName(label.isEmpty() ? QStringLiteral("Channel %1").arg(channel) : label);
        plot->addToLegend();
    }

    // Moved out of the plot area; an empty element below keeps the lines together at the top.
    graph.axisRect()->insetLayout()->take(&legend);
    auto* column = new QCPLayoutGrid;
    QCPLayoutGrid& layout = *graph.plotLayout();
    layout.addElement(layout.rowCount() - 1, 1, column);
    column->setMargins(QMargins(0, 8, 8, 0));
    column->addElement(0, 0, &legend);
    column->addElement(1, 0, new QCPLayoutElement(&graph));
    column->setRowStretchFactor(0, 0.001);
    layout.setColumnStretchFactor(1, 0.001);
}

} // namespace

Result<void> renderTrial(const TrialData& trial, const SamplingSettings& settings, const QString& title,
                         const QStringList& channelLabels, const std::filesystem::path& path, int width, int height) {
    if (width < smallestPictureWidth || height < smallestPictureHeight || std::max(width, height) > largestPictureSide)
        return Error{ErrorKind::InvalidValue, "A picture is between " +
                                                  sizeText(smallestPictureWidth, smallestPictureHeight) + " and " +
                                                  sizeText(largestPictureSide, largestPictureSide) + " pixels, not " +
                                                  sizeText(width, height) + "."};
    if (!trial || trial->empty())
        return Error{ErrorKind::InvalidValue, "The trial holds no samples, so there is nothing to draw."};
    if (settings.Rate < 1)
        return Error{ErrorKind::InvalidValue, "The trial has no sampling rate, so there is no time to draw it over."};
    const Save save = saverFor(path);
    if (save == nullptr)
        return Error{ErrorKind::InvalidValue,
                     "\"" + pathText(path) + "\" does not end in .png, .pdf or .svg. Choose one of these."};

    const std::unique_ptr<CWGraph> paper = graphOnPaper();
    CWGraph& graph = *paper;
    graph.setAxisCaption(CWGraph::Axis::Time, QStringLiteral("Time (seconds)"));
    graph.setAxisCaption(CWGraph::Axis::Voltage, QStringLiteral("Voltage (volts)"));
    graph.plot(trial, sampleIntervalSeconds(settings));
    graph.rescaleOnce(CWGraph::Axis::Time);
    graph.rescaleOnce(CWGraph::Axis::Voltage);
    addTitle(graph, title);
    if (graph.plotCount() > 1) addLegend(graph, channelLabels, height);

    return save(graph, path, width, height);
}

} // namespace tavex2
