#include "display/ui/TrialPicture.h"

#include "display/AxisRange.h"
#include "display/ui/PaperGraph.h"

#include <QFontMetrics>

namespace tavex2 {

namespace {

constexpr QSize smallest(200, 150);
constexpr QSize largest(10000, 10000);

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

Result<void> renderTrialToPng(const TrialData& trial, const SamplingSettings& settings, const QString& title,
                              const QStringList& channelLabels, const std::filesystem::path& path, int width,
                              int height) {
    if (width < smallest.width() || height < smallest.height() || width > largest.width() || height > largest.height())
        return Error{ErrorKind::InvalidValue, "A picture is between 200 x 150 and 10000 x 10000 pixels, not " +
                                                  std::to_string(width) + " x " + std::to_string(height) + "."};
    if (!trial || trial->empty())
        return Error{ErrorKind::InvalidValue, "The trial holds no samples, so there is nothing to draw."};

    const std::unique_ptr<CWGraph> paper = graphOnPaper();
    CWGraph& graph = *paper;
    graph.setAxisCaption(CWGraph::Axis::Time, QStringLiteral("Time (seconds)"));
    graph.setAxisCaption(CWGraph::Axis::Voltage, QStringLiteral("Voltage (volts)"));
    graph.plot(trial, sampleIntervalSeconds(settings));
    graph.rescaleOnce(CWGraph::Axis::Time);
    graph.rescaleOnce(CWGraph::Axis::Voltage);
    addTitle(graph, title);
    if (graph.plotCount() > 1) addLegend(graph, channelLabels, height);

    return saveAsPng(graph, path, width, height);
}

} // namespace tavex2
