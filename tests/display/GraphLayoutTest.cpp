#include "display/Pictures.h"
#include "display/Trials.h"

#include <gtest/gtest.h>

namespace tavex2 {
namespace {

using test::makeTrial;
using test::pictureOf;
using Axis = CWGraph::Axis;

/// Where texts stand around the plot area, in pictures of several sizes.

/// The rows or columns of a picture that hold a dark pixel.
struct Inked {
    int left, right, top, bottom;
};
Inked inked(const QImage& picture) {
    Inked ink{picture.width(), -1, picture.height(), -1};
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (qGray(picture.pixel(x, y)) < 128)
                ink = {std::min(ink.left, x), std::max(ink.right, x), std::min(ink.top, y), std::max(ink.bottom, y)};
    return ink;
}

void usePaper(CWGraph& graph) {
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::black);
    graph.setPalette(palette);
}

TEST(GraphLayout, BreaksACaptionThatIsLongerThanTheGraphIsHigh) {
    CWGraph graph;
    usePaper(graph);
    graph.setYCaption(QStringLiteral("Voltage (millivolts)"));
    const int length = QFontMetrics(graph.font()).horizontalAdvance(QStringLiteral("Voltage (millivolts)"));
    (void)pictureOf(graph, 600, 2 * length);
    EXPECT_EQ(graph.yAxis->label(), QStringLiteral("Voltage (millivolts)"));
    const Inked ink = inked(pictureOf(graph, 600, length));
    EXPECT_EQ(graph.yAxis->label(), QStringLiteral("Voltage\n(millivolts)"));
    EXPECT_GT(ink.top, 0) << "nothing is cut";
    EXPECT_EQ(graph.yCaption(), QStringLiteral("Voltage (millivolts)")) << "the caption stays what it is";
    (void)pictureOf(graph, 600, 2 * length);
    EXPECT_EQ(graph.yAxis->label(), QStringLiteral("Voltage (millivolts)"));
}

TEST(GraphLayout, BreaksACaptionThatIsLongerThanTheGraphIsWide) {
    CWGraph graph;
    usePaper(graph);
    graph.setXCaption(QStringLiteral("Saved Trials Average (milliseconds)"));
    const Inked ink = inked(pictureOf(graph, 220, 300));
    EXPECT_GT(ink.left, 0);
    EXPECT_LT(ink.right, 219);
    EXPECT_TRUE(graph.xAxis->label().contains(QLatin1Char('\n')));
}

TEST(GraphLayout, PutsNoMoreNumbersAtAnAxisThanThereIsRoomFor) {
    CWGraph graph;
    const auto numbersOf = [](const QCPAxis& axis) { return axis.tickVectorLabels(); };
    const QFontMetrics metrics(graph.font());
    graph.setAxisRange(Axis::Time, 45.6788, 45.6789);
    (void)pictureOf(graph, 300, 110);
    const int width = graph.axisRect()->width();
    int sideBySide = 0;
    for (const QString& each : numbersOf(*graph.xAxis))
        sideBySide += metrics.horizontalAdvance(each);
    EXPECT_GT(numbersOf(*graph.xAxis).size(), 0);
    EXPECT_LT(sideBySide, width + metrics.horizontalAdvance(QStringLiteral("45.67880")));
    const auto below = numbersOf(*graph.yAxis).size();
    EXPECT_GE(below, 2);
    EXPECT_LE((below - 1) * metrics.ascent(), graph.axisRect()->height());
    (void)pictureOf(graph, 900, 600);
    EXPECT_GT(numbersOf(*graph.xAxis).size(), 4);
}

TEST(GraphLayout, PutsANoteIntoAStripAboveThePlotAreaAndNotOverTheData) {
    CWGraph graph;
    usePaper(graph);
    const int before = inked(pictureOf(graph)).top;
    graph.setNote(QStringLiteral("Real time, not stored"));
    const QImage area = test::plotAreaOf(graph);
    EXPECT_EQ(test::count(area, qRgb(255, 255, 255)), area.width() * area.height());
    const QImage picture = pictureOf(graph);
    const int left = graph.axisRect()->left();
    const QRect strip(picture.width() / 2, 0, picture.width() / 2, graph.axisRect()->top() - 2);
    EXPECT_GT(inked(picture.copy(strip)).right, 0) << "the note is there";
    graph.setNote(QString());
    EXPECT_EQ(inked(pictureOf(graph)).top, before) << "the strip is gone with it";
    EXPECT_EQ(graph.axisRect()->left(), left) << "and the plot areas of neighbouring graphs stay aligned";
}

TEST(GraphLayout, ShowsTheBeginningOfANoteThatIsTooLong) {
    CWGraph graph;
    usePaper(graph);
    const QString note = QStringLiteral("Real time, not stored. ").repeated(20);
    graph.setNote(note);
    const QImage picture = pictureOf(graph);
    EXPECT_EQ(graph.note(), note);
    const QRect area = graph.axisRect()->rect();
    const Inked ink = inked(picture.copy(0, 0, picture.width(), area.top() / 2));
    EXPECT_GE(ink.left, area.left() - 2) << "it stays above the plot area";
    EXPECT_LE(ink.right, area.right() + 2);
}

} // namespace
} // namespace tavex2
