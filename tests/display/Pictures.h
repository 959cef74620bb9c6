#pragma once

#include "display/TraceColours.h"
#include "display/ui/CWGraph.h"

#include <QImage>

namespace tavex2::test {

/// What a graph looks like right now, without its grid so that only traces are inside the plot area.
inline QImage pictureOf(CWGraph& graph, int width = 600, int height = 400, double scale = 1) {
    graph.xAxis->grid()->setVisible(false);
    graph.yAxis->grid()->setVisible(false);
    return graph.toPixmap(width, height, scale).toImage().convertToFormat(QImage::Format_RGB32);
}

/// The same, cut to the plot area.
inline QImage plotAreaOf(CWGraph& graph, int width = 600, int height = 400) {
    const QImage picture = pictureOf(graph, width, height);
    // The layout of the picture's size; the widget's own may differ.
    const QRect before = graph.viewport();
    graph.setViewport(QRect(0, 0, width, height));
    graph.plotLayout()->update(QCPLayoutElement::upPreparation);
    graph.plotLayout()->update(QCPLayoutElement::upMargins);
    graph.plotLayout()->update(QCPLayoutElement::upLayout);
    const QRect area = graph.axisRect()->rect();
    graph.setViewport(before);
    return picture.copy(area);
}

inline QRgb rgbOf(Rgb colour) {
    return qRgb(colour.red, colour.green, colour.blue);
}

/// Number of pixels of exactly this colour.
inline int count(const QImage& picture, QRgb colour) {
    int result = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            result += (picture.pixel(x, y) | 0xFF000000U) == colour ? 1 : 0;
    return result;
}

/// The columns that hold a pixel of the colour in the rows [top, bottom).
inline std::vector<int> columnsWith(const QImage& picture, QRgb colour, int top, int bottom) {
    std::vector<int> columns;
    for (int x = 0; x < picture.width(); ++x)
        for (int y = top; y < bottom; ++y)
            if ((picture.pixel(x, y) | 0xFF000000U) == colour) {
                columns.push_back(x);
                break;
            }
    return columns;
}

} // namespace tavex2::test
