#include "display/ui/SvgDrawing.h"

#include <QSvgGenerator>

namespace tavex2 {

QString drawSvg(CWGraph& graph, QIODevice& file, int width, int height) {
    constexpr int pixelsPerInch = 96;
    QSvgGenerator drawing;
    drawing.setOutputDevice(&file);
    drawing.setResolution(pixelsPerInch);
    drawing.setSize(QSize(width, height));
    drawing.setViewBox(QRect(0, 0, width, height));
    QCPPainter painter;
    if (!painter.begin(&drawing)) return QStringLiteral("it cannot be begun");
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNoCaching);
    graph.toPainter(&painter, width, height);
    return painter.end() ? QString() : QStringLiteral("it cannot be finished");
}

} // namespace tavex2
