#include "display/Pictures.h"
#include "display/TraceColumns.h"
#include "display/Trials.h"
#include "support/WindowTesting.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavex2 {
namespace {

using test::count;
using test::makeTrial;
using test::plotAreaOf;
using test::rgbOf;
using Axis = CWGraph::Axis;

constexpr QRgb white = qRgb(255, 255, 255);

/// By how much, of 255, a pixel's red, green or blue differs at most.
int largestDifference(const QImage& one, const QImage& other) {
    int largest = one.size() == other.size() ? 0 : 255;
    for (int y = 0; y < one.height() && largest < 255; ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            largest = std::max(
                {largest, std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
        }
    }
    return largest;
}

TEST(GraphPicture, ShowsASpikeOfOneSampleAmongFiveMillionInTheFullView) {
    constexpr std::int64_t samples = 5'000'000;
    for (const std::int64_t spike : {std::int64_t{0}, samples / 3, samples - 1}) {
        CWGraph graph;
        graph.plot(makeTrial(1, samples, [spike](int, std::int64_t i) { return i == spike ? 5.0 : 0.0; }), 1e-5);
        graph.rescaleOnce(Axis::Time);
        graph.setAxisRange(Axis::Voltage, -1, 6);
        const QImage area = plotAreaOf(graph);
        // Rows from 4.6 V to 2 V, where nothing but the spike can be.
        const auto columns = test::columnsWith(area, rgbOf(traceColour(0)), area.height() / 5, area.height() * 4 / 7);
        ASSERT_EQ(columns.size(), 1U) << "spike at " << spike;
        EXPECT_NEAR(columns.front(), static_cast<double>(spike) / samples * area.width(), 1);
    }
}

TEST(GraphPicture, ShowsASpikeOfOneSampleInEveryZoomThatHoldsIt) {
    constexpr std::int64_t samples = 200'000;
    CWGraph graph;
    graph.plot(makeTrial(1, samples, [](int, std::int64_t i) { return i == 70'001 ? 5.0 : 0.0; }), 1e-5);
    graph.setAxisRange(Axis::Voltage, -1, 6);
    for (double halfSpan = 1.0; halfSpan > 1e-3; halfSpan /= 1.7) {
        graph.setAxisRange(Axis::Time, 0.7 - halfSpan, 0.7 + halfSpan);
        const QImage area = plotAreaOf(graph);
        EXPECT_FALSE(test::columnsWith(area, rgbOf(traceColour(0)), area.height() / 5, area.height() * 4 / 7).empty())
            << "half span " << halfSpan;
    }
}

TEST(GraphPicture, DrawsAnUnbrokenLineFromZoomedOutToZoomedIn) {
    CWGraph graph;
    graph.plot(makeTrial(1, 100'000, [](int, std::int64_t i) { return 4 * std::sin(static_cast<double>(i) / 5000); }),
               1e-3);
    graph.setAxisRange(Axis::Voltage, -5, 5);
    for (double span = 99.9; span > 0.01; span /= 3) {
        graph.setAxisRange(Axis::Time, 0, span);
        const QImage area = plotAreaOf(graph);
        for (int x = 0; x < area.width(); ++x) {
            int drawn = 0;
            for (int y = 0; y < area.height(); ++y)
                drawn += (area.pixel(x, y) | 0xFF000000U) != white ? 1 : 0;
            ASSERT_GT(drawn, 0) << "column " << x << " of a span of " << span << " s";
        }
    }
}

TEST(GraphPicture, GivesEveryChannelItsColour) {
    CWGraph graph;
    graph.plot(makeTrial(16, 5000, [](int channel, std::int64_t) { return channel; }), 1e-3);
    graph.setAxisRange(Axis::Time, 0, 4.999);
    graph.setAxisRange(Axis::Voltage, -1, 16);
    const QImage area = plotAreaOf(graph);
    for (int channel = 0; channel < 16; ++channel) {
        const int y = static_cast<int>(area.height() * (16.0 - channel) / 17.0);
        const auto columns = test::columnsWith(area, rgbOf(traceColour(channel)), y - 2, y + 3);
        EXPECT_GT(columns.size(), static_cast<std::size_t>(area.width() * 9 / 10)) << "channel " << channel;
    }
}

TEST(GraphPicture, DrawsMoreThanSixteenChannelsWithRepeatedColours) {
    CWGraph graph;
    graph.plot(makeTrial(18, 5000, [](int channel, std::int64_t) { return channel == 17 ? 1.0 : -5.0; }), 1e-3);
    graph.setAxisRange(Axis::Time, 0, 4.999);
    graph.setAxisRange(Axis::Voltage, 0, 2);
    EXPECT_EQ(graph.plotCount(), 18);
    EXPECT_GT(count(plotAreaOf(graph), rgbOf(traceColour(1))), 100);
}

TEST(GraphPicture, FillsHighColumnsFromTheLowestToTheHighestSampleWithoutAHole) {
    // Ever other heights above and below, some of them low, some too low for their neighbours to have rows in common.
    constexpr int perColumn = 50;
    const auto volts = [](int, std::int64_t i) {
        const auto column = static_cast<double>(i / perColumn);
        const double reach = 1 + 4 * std::abs(std::sin(column * column));
        return (i % 2 == 0 ? reach : -reach) * (std::fmod(column, 97) < 30 ? 0.05 : 1.0);
    };
    CWGraph graph;
    constexpr std::int64_t samples = 100'000;
    const auto trial = makeTrial(1, samples, volts);
    graph.plot(trial, 1.0);
    const int width = plotAreaOf(graph, 900, 700).width();
    graph.setAxisRange(Axis::Time, 0, width * perColumn);
    graph.setAxisRange(Axis::Voltage, -6, 6);
    const QImage area = plotAreaOf(graph, 900, 700);
    ASSERT_EQ(area.width(), width);

    const TracePyramid pyramid(trial->doubles(0));
    std::vector<Extent> columns;
    traceColumns(pyramid, 1.0, {0, static_cast<double>(width * perColumn), width}, columns);
    const auto row = [&area](double value) { return (6 - value) / 12 * area.height(); };
    for (int x = 0; x < width; ++x) {
        const Extent& column = columns[static_cast<std::size_t>(x)];
        for (int y = 0; y < area.height(); ++y) {
            const bool painted = (area.pixel(x, y) | 0xFF000000U) == rgbOf(traceColour(0));
            const bool inside = y > row(column.highest) + 1 && y < row(column.lowest) - 1;
            const bool outside = y < row(column.highest) - 2 || y > row(column.lowest) + 2;
            ASSERT_FALSE(painted ? outside : inside) << x << "," << y;
        }
    }
}

TEST(GraphPicture, OutlinesALightTrace) {
    CWGraph graph;
    graph.plot(makeTrial(11, 5000, [](int channel, std::int64_t) { return channel == 10 ? 1.0 : -5.0; }), 1e-3);
    graph.setAxisRange(Axis::Time, 0, 4.999);
    graph.setAxisRange(Axis::Voltage, 0, 2);
    const QImage area = plotAreaOf(graph);
    EXPECT_GT(count(area, rgbOf(traceColour(10))), 100);
    EXPECT_GT(count(area, rgbOf(*traceOutline(traceColour(10)))), 100);
}

TEST(GraphPicture, OutlinesALightTraceZoomedInAllAlongItAndALoneSampleToo) {
    CWGraph graph;
    // A line, a gap, a lone sample.
    graph.plot(makeTrial(11, 31,
                         [](int channel, std::int64_t i) {
                             if (channel != 10) return -5.0;
                             return i > 20 && i != 26 ? std::nan("") : 1.0;
                         }),
               1.0);
    graph.setAxisRange(Axis::Time, 0, 30);
    graph.setAxisRange(Axis::Voltage, 0, 2);
    const QImage area = plotAreaOf(graph);
    const auto rimAt = [&area](double share) {
        const int x = static_cast<int>(share * area.width());
        int dark = 0;
        for (int y = 0; y < area.height(); ++y)
            dark += qGray(area.pixel(x, y)) < 200 ? 1 : 0;
        return dark;
    };
    for (const double sample : {0.5, 1.0, 10.0, 19.9, 26.0})
        EXPECT_GE(rimAt(sample / 30), 2) << "sample " << sample;
    EXPECT_EQ(rimAt(23.0 / 30), 0);
}

TEST(GraphPicture, LooksTheSameInPixelsAsDrawnInShapes) {
    // Dense, outlined, gapped and lying over each other.
    const auto volts = [](int channel, std::int64_t i) {
        if (channel == 4 && i > 30'000 && i < 41'000) return std::nan("");
        return channel / 4.0 - 2 + std::sin(static_cast<double>(i) / (2000 + 300 * channel)) +
               0.4 * std::sin(static_cast<double>(i * i) * 0.37);
    };
    CWGraph graph;
    graph.plot(makeTrial(12, 100'000, volts), 1e-3);
    graph.setAxisRange(Axis::Voltage, -2, 2);
    for (QCPAxis* axis : {graph.xAxis, graph.yAxis})
        axis->grid()->setVisible(false);
    for (const double seconds : {100.0, 37.0, 3.0, 0.7}) {
        graph.setAxisRange(Axis::Time, 29, 29 + seconds);
        for (const int scale : {1, 2, 3}) {
            const QImage pixels = graph.toPixmap(600, 400, scale).toImage().convertToFormat(QImage::Format_RGB32);
            QImage shapes(pixels.size(), QImage::Format_RGB32);
            shapes.fill(Qt::white);
            QCPPainter painter(&shapes);
            painter.setMode(QCPPainter::pmVectorized);
            painter.scale(scale, scale);
            graph.toPainter(&painter, 600, 400);
            painter.end();
            // Inside the frame, which the two kinds of picture do not draw alike.
            const QRect inside = QRect(120 * scale, 30 * scale, 400 * scale, 280 * scale);
            EXPECT_EQ(pixels.copy(inside), shapes.copy(inside)) << seconds << " s at scale " << scale;
        }
    }
}

TEST(GraphPicture, IsGoneWhenThePlotsAreCleared) {
    CWGraph graph;
    graph.plot(makeTrial(4, 5000, [](int channel, std::int64_t) { return channel; }), 1e-3);
    graph.clearPlots();
    EXPECT_EQ(graph.plotCount(), 0);
    const QImage area = plotAreaOf(graph);
    EXPECT_EQ(count(area, white), area.width() * area.height());
}

TEST(GraphPicture, MultipliesTheValuesByTheFactor) {
    CWGraph graph;
    graph.plot(makeTrial(1, 5000, [](int, std::int64_t) { return 30.0; }), 1e-3, 0.1);
    graph.setAxisRange(Axis::Time, 0, 4.999);
    graph.setAxisRange(Axis::Voltage, 2, 4);
    const QImage area = plotAreaOf(graph);
    const auto columns = test::columnsWith(area, rgbOf(traceColour(0)), area.height() / 2 - 3, area.height() / 2 + 3);
    EXPECT_GT(columns.size(), static_cast<std::size_t>(area.width() * 9 / 10));
}

TEST(GraphPicture, MirrorsATraceBetweenLimitsTheWrongWayRound) {
    CWGraph graph;
    graph.plot(makeTrial(1, 5000, [](int, std::int64_t i) { return i < 2500 ? 1.0 : 0.0; }), 1e-3);
    graph.setAxisRange(Axis::Voltage, -0.5, 1.5);
    graph.setAxisRange(Axis::Time, 4.999, 0);
    const QImage area = plotAreaOf(graph);
    const auto high = test::columnsWith(area, rgbOf(traceColour(0)), 0, area.height() / 2 - 10);
    ASSERT_FALSE(high.empty());
    EXPECT_NEAR(high.front(), area.width() / 2, 3);
    EXPECT_NEAR(high.back(), area.width() - 1, 3);
}

TEST(GraphPicture, LeavesAGapWhereSamplesAreNoNumbers) {
    CWGraph graph;
    graph.plot(makeTrial(1, 9, [](int, std::int64_t i) { return i >= 3 && i <= 5 ? std::nan("") : 0.0; }), 1.0);
    graph.setAxisRange(Axis::Time, 0, 8);
    graph.setAxisRange(Axis::Voltage, -1, 1);
    const QImage area = plotAreaOf(graph);
    for (int x = area.width() * 3 / 8; x < area.width() * 5 / 8; ++x)
        for (int y = 0; y < area.height(); ++y)
            ASSERT_EQ(area.pixel(x, y) | 0xFF000000U, white) << x << "," << y;
    EXPECT_LT(count(area, white), area.width() * area.height());
}

TEST(GraphPicture, StaysRightWhenAnExtremeZoomSendsPointsFarAway) {
    CWGraph graph;
    graph.plot(makeTrial({-10.0, 10.0}), 1.0);
    graph.setAxisRange(Axis::Time, 0, 1);
    graph.setAxisRange(Axis::Voltage, -1e-6, 1e-6);
    const QImage area = plotAreaOf(graph);
    const auto columns = test::columnsWith(area, rgbOf(traceColour(0)), 0, area.height());
    ASSERT_FALSE(columns.empty());
    EXPECT_NEAR(columns.front(), area.width() / 2, 3);
    EXPECT_NEAR(columns.back(), area.width() / 2, 3);
}

TEST(GraphPicture, KeepsAWhitePlotAreaUnderADarkPaletteAndFollowsItOutside) {
    CWGraph graph;
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(30, 31, 32));
    dark.setColor(QPalette::WindowText, QColor(230, 231, 232));
    graph.setPalette(dark);
    const QImage picture = test::pictureOf(graph);
    EXPECT_EQ(picture.pixel(2, 2) | 0xFF000000U, qRgb(30, 31, 32));
    EXPECT_GT(count(picture, qRgb(230, 231, 232)), 50);
    EXPECT_EQ(plotAreaOf(graph).pixel(5, 5) | 0xFF000000U, white);
}

TEST(GraphPicture, IsTheSameWhileTheGraphIsDisabled) {
    CWGraph graph;
    graph.setXCaption(QStringLiteral("Time"));
    const QImage enabled = test::pictureOf(graph);
    graph.setEnabled(false);
    EXPECT_EQ(test::pictureOf(graph), enabled);
}

TEST(GraphPicture, DrawsFinerOnAFinerDevice) {
    CWGraph graph;
    graph.plot(makeTrial(1, 500'000, [](int, std::int64_t i) { return i == 250'000 ? 5.0 : 0.0; }), 1e-5);
    graph.rescaleOnce(Axis::Time);
    graph.setAxisRange(Axis::Voltage, -1, 6);
    const QImage picture = test::pictureOf(graph, 600, 400, 2);
    EXPECT_EQ(picture.size(), QSize(1200, 800));
    const auto columns = test::columnsWith(picture, rgbOf(traceColour(0)), 200, 400);
    // Besides the spike, two pixels wide, only the frame and the axis are black here.
    int spikeColumns = 0;
    for (const int column : columns)
        spikeColumns += column > 400 && column < 900 ? 1 : 0;
    EXPECT_EQ(spikeColumns, 2);
}

TEST(GraphPicture, ShowsTheHintOnlyWhileThereIsNothingElse) {
    CWGraph graph;
    const QImage bare = plotAreaOf(graph);
    EXPECT_EQ(count(bare, white), bare.width() * bare.height());
    graph.setEmptyText(QStringLiteral("Press Collect (Space)"));
    const QImage hinted = plotAreaOf(graph);
    EXPECT_LT(count(hinted, white), hinted.width() * hinted.height());

    graph.plot(makeTrial(1, 10, [](int, std::int64_t) { return 50.0; }), 1.0);
    const QImage plotted = plotAreaOf(graph);
    EXPECT_EQ(count(plotted, white), plotted.width() * plotted.height());
    graph.clearPlots();
    EXPECT_EQ(plotAreaOf(graph), hinted);
}

TEST(GraphPicture, ReachesTheScreenAtTheNextTurnOfTheEventLoop) {
    CWGraph graph;
    graph.resize(600, 400);
    graph.show();
    const QImage before = graph.grab().toImage();
    graph.plot(makeTrial(1, 5000, [](int, std::int64_t) { return 5.0; }), 1e-3);
    EXPECT_TRUE(test::waitFor([&] { return graph.grab().toImage() != before; }));
}

TEST(GraphPicture, OnTheScreenIsWhatAPictureOfItIs) {
    CWGraph graph;
    graph.plot(
        makeTrial(12, 5000,
                  [](int channel, std::int64_t i) { return channel / 3.0 + std::sin(static_cast<double>(i) * 0.7); }),
        1e-3);
    graph.setAxisRange(Axis::Voltage, -2, 6);
    graph.resize(600, 400);
    graph.show();
    for (const double seconds : {5.0, 0.05}) {
        graph.setAxisRange(Axis::Time, 0, seconds);
        for (int redraw = 0; redraw < 3; ++redraw) {
            graph.replot(QCustomPlot::rpImmediateRefresh);
            const QImage screen = graph.grab().toImage().convertToFormat(QImage::Format_RGB32);
            const QImage picture = graph.toPixmap(600, 400).toImage().convertToFormat(QImage::Format_RGB32);
            const QRect area = graph.axisRect()->rect();
            EXPECT_LE(largestDifference(screen.copy(area), picture.copy(area)), 4)
                << seconds << " s, redraw " << redraw;
        }
    }
}

TEST(GraphPicture, BetweenEqualLimitsShowsOnlyWhatHasThisValue) {
    CWGraph graph;
    graph.plot(makeTrial(2, 5000, [](int channel, std::int64_t) { return channel == 0 ? 2.0 : 2.001; }), 1e-3);
    graph.setAxisRange(Axis::Time, 0, 4.999);
    graph.setAxisRange(Axis::Voltage, 2, 2);
    const QImage area = plotAreaOf(graph);
    const int middle = area.height() / 2;
    EXPECT_GT(test::columnsWith(area, rgbOf(traceColour(0)), middle - 3, middle + 3).size(),
              static_cast<std::size_t>(area.width() * 9 / 10));
    EXPECT_EQ(count(area, rgbOf(traceColour(1))), 0);
}

TEST(GraphPicture, DrawsATraceInTheColourThatItIsGiven) {
    CWGraph graph;
    graph.plot(makeTrial(1, 5000, [](int, std::int64_t) { return 1.0; }), 1e-3);
    graph.setAxisRange(Axis::Time, 0, 4.999);
    graph.setTraceColour(0, averageColour);
    EXPECT_GT(count(plotAreaOf(graph), rgbOf(averageColour)), 100);
    graph.setTraceColour(0, std::nullopt);
    EXPECT_EQ(count(plotAreaOf(graph), rgbOf(averageColour)), 0);
    EXPECT_GT(count(plotAreaOf(graph), rgbOf(traceColour(0))), 100);
}

} // namespace
} // namespace tavex2
