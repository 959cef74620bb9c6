#include "display/ui/PaperGraph.h"

#include "base/PathText.h"
#include "display/ui/SvgDrawing.h"
#include "platform/AtomicFile.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPageSize>
#include <QPdfWriter>

#include <span>

namespace tavex2 {

namespace {

/// Lets `draw` fill a file that appears as a whole or not at all. `draw` returns what went wrong, or nothing.
template <class Draw>
Result<void> saveWith(const std::filesystem::path& path, const Draw& draw) {
    Result<AtomicFile> file = AtomicFile::create(path);
    if (!file) return file.error();
    QBuffer picture;
    picture.open(QIODevice::WriteOnly);
    if (const QString problem = draw(picture); !problem.isEmpty())
        return Error{ErrorKind::WriteFailed, "The picture " + pathText(path) + " could not be drawn (" +
                                                 problem.toStdString() + "). Choose another size or kind."};
    if (auto written = file.value().write(std::as_bytes(std::span(picture.data()))); !written) return written;
    return file.value().commit();
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

Result<void> saveAsSvg(CWGraph& graph, const std::filesystem::path& path, int width, int height) {
    return saveWith(path, [&](QIODevice& file) { return drawSvg(graph, file, width, height); });
}

} // namespace tavex2
