#include "display/ui/TrialPicture.h"

#include "display/Pictures.h"
#include "display/Trials.h"
#include "support/TemporaryFolder.h"

#include <QImage>
#include <gtest/gtest.h>

#include <fstream>

namespace tavex2 {
namespace {

using test::makeTrial;
using test::takenAt;

TrialData steps(int channels) {
    return makeTrial(channels, 1001, [](int channel, std::int64_t) { return channel; });
}

QImage read(const std::filesystem::path& path) {
    return QImage(QString::fromStdString(path.string())).convertToFormat(QImage::Format_RGB32);
}

TEST(TrialPicture, IsAPngOfTheSizeAskedForWithEveryChannelInIt) {
    const test::TemporaryFolder folder;
    const auto written =
        renderTrial(steps(3), takenAt(1000), QStringLiteral("Trial0001"), {}, folder / "t.png", 640, 480);
    ASSERT_TRUE(written) << written.error().text;
    EXPECT_EQ(test::bytesOf(folder / "t.png").substr(1, 3), "PNG");
    const QImage picture = read(folder / "t.png");
    EXPECT_EQ(picture.size(), QSize(640, 480));
    EXPECT_EQ(picture.pixel(0, 0), qRgb(255, 255, 255));
    for (int channel = 0; channel < 3; ++channel)
        EXPECT_GT(test::count(picture, test::rgbOf(traceColour(channel))), 300) << channel;
}

TEST(TrialPicture, HasALegendAtTheRightForMoreThanOneChannel) {
    const test::TemporaryFolder folder;
    ASSERT_TRUE(renderTrial(steps(2), takenAt(1000), {}, {QStringLiteral("I")}, folder / "two.png", 640, 480));
    ASSERT_TRUE(renderTrial(steps(1), takenAt(1000), {}, {QStringLiteral("I")}, folder / "one.png", 640, 480));
    const QImage two = read(folder / "two.png");
    const QImage one = read(folder / "one.png");
    // The plot area's right edge: the last column that is black almost from top to bottom.
    const auto rightEdge = [](const QImage& picture) {
        for (int x = picture.width() - 1; x > 0; --x) {
            int black = 0;
            for (int y = 0; y < picture.height(); ++y)
                black += picture.pixel(x, y) == qRgb(0, 0, 0) ? 1 : 0;
            if (black > picture.height() * 3 / 4) return x;
        }
        return 0;
    };
    EXPECT_LT(rightEdge(two) + 30, rightEdge(one));
    const QImage legend = two.copy(rightEdge(two) + 1, 0, two.width(), two.height());
    EXPECT_GT(test::count(legend, test::rgbOf(traceColour(1))), 50);
}

TEST(TrialPicture, TakesAsManyChannelsAsATrialCanHave) {
    const test::TemporaryFolder folder;
    const auto written = renderTrial(steps(64), takenAt(1000), {}, {}, folder / "t.png", 900, 400);
    ASSERT_TRUE(written) << written.error().text;
    EXPECT_EQ(read(folder / "t.png").size(), QSize(900, 400));
}

TEST(TrialPicture, IsTheSameWhateverPaletteTheDesktopHas) {
    const test::TemporaryFolder folder;
    ASSERT_TRUE(renderTrial(steps(2), takenAt(1000), {}, {}, folder / "light.png", 400, 300));
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    const auto written = renderTrial(steps(2), takenAt(1000), {}, {}, folder / "dark.png", 400, 300);
    QApplication::setPalette(before);
    ASSERT_TRUE(written);
    EXPECT_EQ(read(folder / "dark.png"), read(folder / "light.png"));
}

TEST(TrialPicture, IsRefusedWithAReasonWhenTheFolderDoesNotExist) {
    const test::TemporaryFolder folder;
    const auto written = renderTrial(steps(1), takenAt(1000), {}, {}, folder / "missing" / "t.png", 400, 300);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, ErrorKind::NotFound);
    EXPECT_NE(written.error().text.find("missing"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
}

TEST(TrialPicture, IsRefusedWhereAFolderHasItsName) {
    const test::TemporaryFolder folder;
    std::filesystem::create_directory(folder / "t.png");
    EXPECT_FALSE(renderTrial(steps(1), takenAt(1000), {}, {}, folder / "t.png", 400, 300));
}

TEST(TrialPicture, ReplacesAnOlderOneOnlyWhenThereIsSomethingToDraw) {
    const test::TemporaryFolder folder;
    std::ofstream(folder / "t.png") << "old";
    for (const TrialData& nothing : {TrialData(), std::make_shared<const TrialArray>()}) {
        const auto written = renderTrial(nothing, takenAt(1000), {}, {}, folder / "t.png", 400, 300);
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().kind, ErrorKind::InvalidValue);
    }
    EXPECT_EQ(test::bytesOf(folder / "t.png"), "old");
    ASSERT_TRUE(renderTrial(steps(1), takenAt(1000), {}, {}, folder / "t.png", 400, 300));
    EXPECT_EQ(read(folder / "t.png").size(), QSize(400, 300));
}

TEST(TrialPicture, IsOfTheKindThatItsNameSays) {
    const test::TemporaryFolder folder;
    const auto draw = [&](const char* name) {
        return renderTrial(steps(2), takenAt(1000), QStringLiteral("Trial0001"), {}, folder / name, 400, 300);
    };
    ASSERT_TRUE(draw("t.PDF"));
    EXPECT_EQ(test::bytesOf(folder / "t.PDF").substr(0, 5), "%PDF-");
    ASSERT_TRUE(draw("t.svg"));
    const std::string drawing = test::bytesOf(folder / "t.svg");
    EXPECT_NE(drawing.find("viewBox=\"0 0 400 300\""), std::string::npos);
    EXPECT_NE(drawing.find(">Trial0001<"), std::string::npos) << "text stays text";
    EXPECT_GT(test::count(read(folder / "t.svg"), test::rgbOf(traceColour(1))), 30) << "and is a picture";
    const auto refused = draw("t.jpg");
    ASSERT_FALSE(refused);
    EXPECT_NE(refused.error().text.find(".png, .pdf or .svg"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder / "t.jpg"));
}

TEST(TrialPicture, NeedsARate) {
    const test::TemporaryFolder folder;
    EXPECT_FALSE(renderTrial(steps(1), takenAt(0), {}, {}, folder / "t.png", 400, 300));
}

TEST(TrialPicture, RefusesSizesThatNoPictureCanHave) {
    const test::TemporaryFolder folder;
    for (const QSize size : {QSize(0, 0), QSize(-400, 300), QSize(199, 300), QSize(400, 149), QSize(10001, 300)}) {
        const auto written =
            renderTrial(steps(1), takenAt(1000), {}, {}, folder / "t.png", size.width(), size.height());
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().kind, ErrorKind::InvalidValue);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

} // namespace
} // namespace tavex2
