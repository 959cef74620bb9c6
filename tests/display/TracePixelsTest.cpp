#include "display/TracePixels.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace tavex2 {
namespace {

constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t black = 0xFF000000;

/// A picture with a margin that nothing may be painted on.
struct Picture {
    static constexpr int margin = 2;

    Picture(int columns, int rows)
        : width(columns), height(rows),
          pixels(static_cast<std::size_t>((columns + 2 * margin) * (rows + 2 * margin)), white) {}

    std::uint32_t& at(int x, int y) {
        return pixels[static_cast<std::size_t>((y + margin) * (width + 2 * margin) + x + margin)];
    }
    PixelArea area() { return {&at(0, 0), width + 2 * margin, width, height}; }

    /// How much ink a column has, a black pixel being 1.
    double ink(int x) {
        double sum = 0;
        for (int y = 0; y < height; ++y)
            sum += (255.0 - (at(x, y) & 0xFF)) / 255;
        return sum;
    }
    bool marginIsClean() {
        for (int y = -margin; y < height + margin; ++y)
            for (int x = -margin; x < width + margin; ++x)
                if ((x < 0 || y < 0 || x >= width || y >= height) && at(x, y) != white) return false;
        return true;
    }

    int width;
    int height;
    std::vector<std::uint32_t> pixels;
};

void fill(Picture& picture, int left, int right, RowSpan rows, std::uint32_t colour) {
    for (int x = std::max(left, 0); x <= std::min(right, picture.width - 1); ++x)
        for (int y = std::max(rows.first, 0); y <= std::min(rows.last, picture.height - 1); ++y)
            picture.at(x, y) = colour;
}

RC_GTEST_PROP(TracePixels, OfShapesLookAsIfEachTraceWerePaintedOverTheOnesBefore, ()) {
    const int width = *rc::gen::inRange(1, 40);
    const int height = *rc::gen::inRange(1, 200);
    std::vector<TraceShape> traces(*rc::gen::inRange<std::size_t>(0, 6));
    Picture expected(width, height);
    std::uint32_t colour = 0xFF000010;
    for (TraceShape& trace : traces) {
        trace.before = *rc::gen::inRange(0, 3);
        trace.after = *rc::gen::inRange(0, 2);
        trace.rim = *rc::gen::inRange(1, 3);
        trace.colour = ++colour;
        trace.outline = *rc::gen::arbitrary<bool>() ? ++colour : 0;
        for (int x = 0; x < width; ++x) {
            const int first = *rc::gen::inRange(-10, height + 10);
            trace.columns.push_back({first, first + *rc::gen::inRange(-1, height)});
        }
        for (const bool outline : {true, false}) {
            if (outline && trace.outline == 0) continue;
            const int rim = outline ? trace.rim : 0;
            for (int x = 0; x < width; ++x) {
                const RowSpan rows = trace.columns[static_cast<std::size_t>(x)];
                if (!rows.empty())
                    fill(expected, x - trace.after - rim, x + trace.before + rim, {rows.first - rim, rows.last + rim},
                         outline ? trace.outline : trace.colour);
            }
        }
    }
    Picture picture(width, height);
    paintShapes(picture.area(), traces);
    RC_ASSERT(picture.pixels == expected.pixels);
}

TEST(TracePixels, OfALineHaveTheSameInkInEveryColumnOfAGentleSlope) {
    Picture picture(40, 30);
    const std::vector<PixelPoint> points{{-5, 3.3}, {17.2, 11.9}, {50, 24.6}};
    paintLine(picture.area(), points, 1, black);
    for (int x = 0; x < picture.width; ++x)
        EXPECT_NEAR(picture.ink(x), 1, 0.02) << x;
    EXPECT_TRUE(picture.marginIsClean());
}

TEST(TracePixels, OfALineFollowItOverPeaksAndAreUnbroken) {
    Picture picture(60, 60);
    const std::vector<PixelPoint> points{{0, 50}, {10, 5}, {20, 55}, {35, 50}, {40, 10}, {59, 12}};
    paintLine(picture.area(), points, 1, black);
    for (int x = 1; x < 59; ++x)
        EXPECT_GT(picture.ink(x), 0.9) << x;
    for (const PixelPoint& point : points) {
        int near = 0;
        for (int x = std::max(0, static_cast<int>(point.x) - 1); x <= std::min(59, static_cast<int>(point.x) + 1); ++x)
            for (int y = static_cast<int>(point.y) - 1; y <= static_cast<int>(point.y) + 1; ++y)
                near += picture.at(x, y) != white ? 1 : 0;
        EXPECT_GT(near, 0) << point.x;
    }
    EXPECT_TRUE(picture.marginIsClean());
}

TEST(TracePixels, OfAThickLineAreAsThickAcrossItAtEverySlope) {
    for (const double rise : {0.0, 20.0, 40.0}) {
        Picture picture(60, 60);
        const std::vector<PixelPoint> points{{-10, 10 - rise / 6}, {70, 10 + rise * 7 / 6}};
        paintLine(picture.area(), points, 3, black);
        const double slope = rise * 8 / 6 / 80;
        EXPECT_NEAR(picture.ink(30), 3 * std::sqrt(1 + slope * slope), 0.05) << rise;
    }
}

TEST(TracePixels, OfALineLeaveAGapAtABreakAndShowALoneSample) {
    Picture picture(40, 20);
    const double gap = std::nan("");
    paintLine(picture.area(),
              std::vector<PixelPoint>{{0, 10}, {10, 10}, {15, gap}, {20.5, 10.5}, {25, gap}, {30, 10}, {39, 10}}, 1,
              black);
    EXPECT_GT(picture.ink(5), 0.9);
    for (const int x : {13, 16, 24, 27})
        EXPECT_EQ(picture.ink(x), 0) << x;
    EXPECT_GT(picture.ink(20), 0.9);
    EXPECT_GT(picture.ink(35), 0.9);
}

} // namespace
} // namespace tavex2
