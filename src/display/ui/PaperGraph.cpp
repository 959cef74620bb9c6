#include "display/ui/PaperGraph.h"

#include "base/PathText.h"

#include <QImageWriter>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>

namespace tavex2 {

namespace {

Error writeError(const std::filesystem::path& path, const QString& reason) {
    return {ErrorKind::WriteFailed, "Cannot write the picture \"" + pathText(path) + "\": " + reason.toStdString() +
                                        ". Choose a file in a folder that exists and can be written."};
}

/// Lets `draw` fill a file that appears as a whole or not at all. `draw` returns what went wrong, or nothing.
template <class Draw>
Result<void> saveWith(const std::filesystem::path& path, const Draw& draw) {
    QSaveFile file(QString::fromStdString(pathText(path)));
    if (!file.open(QIODevice::WriteOnly)) return writeError(path, file.errorString());
    if (const QString problem = draw(file); !problem.isEmpty()) return writeError(path, problem);
    if (!file.commit()) return writeError(path, file.errorString());
    return {};
}

} // namespace

std::unique_ptr<CWGraph> graphOnPaper() {
    auto graph = std::make_unique<CWGraph>();
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::black);
    graph->setPalette(palette);
    return graph;
}

std::unique_ptr<CWGraph> copyOnPaper(const CWGraph& shown) {
    auto copy = graphOnPaper();
    copy->plot(shown.pyramid(), shown.sampleIntervalSeconds(), shown.valueFactor());
    for (const CWGraph::Axis axis : {CWGraph::Axis::Time, CWGraph::Axis::Voltage}) {
        copy->setAxisCaption(axis, shown.axisCaption(axis));
        copy->setLabelScaleExpression(axis, shown.labelScaleExpression(axis));
        copy->setAxisRange(axis, shown.axisMinimum(axis), shown.axisMaximum(axis));
    }
    copy->setNote(shown.note());
    return copy;
}

Result<void> saveAsPng(CWGraph& graph, const std::filesystem::path& path, int width, int height, double scale) {
    return saveWith(path, [&](QIODevice& file) {
        QImageWriter writer(&file, "png");
        return writer.write(graph.toPixmap(width, height, scale).toImage()) ? QString() : writer.errorString();
    });
}

Result<void> saveAsPdf(CWGraph& graph, const std::filesystem::path& path, int width, int height) {
    return saveWith(path, [&](QIODevice& file) {
        constexpr int pixelsPerInch = 96;
        constexpr double pointsPerPixel = 72.0 / pixelsPerInch;
        constexpr int fineness = 4; // places between pixels
        QPdfWriter writer(&file);
        writer.setResolution(pixelsPerInch * fineness);
        writer.setPageSize(
            QPageSize(QSizeF(width, height) * pointsPerPixel, QPageSize::Point, QString(), QPageSize::ExactMatch));
        writer.setPageMargins(QMarginsF());
        QCPPainter painter;
        if (!painter.begin(&writer)) return QStringLiteral("The picture cannot be drawn");
        painter.setMode(QCPPainter::pmVectorized);
        painter.setMode(QCPPainter::pmNoCaching);
        painter.scale(fineness, fineness);
        graph.toPainter(&painter, width, height);
        return painter.end() ? QString() : QStringLiteral("The picture cannot be finished");
    });
}

} // namespace tavex2
