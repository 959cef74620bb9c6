#include "display/ui/TrialPicture.h"

#include "base/PathText.h"
#include "display/AxisRange.h"
#include "display/ui/CWGraph.h"

#include <QFontMetrics>
#include <QImageWriter>
#include <QSaveFile>

namespace tavex2 {

namespace {

constexpr QSize smallest(200, 150);
constexpr QSize largest(10000, 10000);

QPalette paper() {
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::black);
    return palette;
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

Error writeError(const std::filesystem::path& path, const QString& reason) {
    return {ErrorKind::WriteFailed, "Cannot write the picture \"" + pathText(path) + "\": " + reason.toStdString() +
                                        ". Choose a file in a folder that exists and can be written."};
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

    CWGraph graph;
    graph.setPalette(paper());
    graph.setAxisCaption(CWGraph::Axis::Time, QStringLiteral("Time (seconds)"));
    graph.setAxisCaption(CWGraph::Axis::Voltage, QStringLiteral("Voltage (volts)"));
    graph.plot(trial, sampleIntervalSeconds(settings));
    graph.rescaleOnce(CWGraph::Axis::Time);
    graph.rescaleOnce(CWGraph::Axis::Voltage);
    addTitle(graph, title);
    if (graph.plotCount() > 1) addLegend(graph, channelLabels, height);

    QSaveFile file(QString::fromStdString(pathText(path)));
    if (!file.open(QIODevice::WriteOnly)) return writeError(path, file.errorString());
    QImageWriter writer(&file, "png");
    if (!writer.write(graph.toPixmap(width, height).toImage())) return writeError(path, writer.errorString());
    if (!file.commit()) return writeError(path, file.errorString());
    return {};
}

} // namespace tavex2
