#include "app/MainWindowFixture.h"
#include "display/TraceColours.h"
#include "display/ui/CWGraph.h"
#include "support/Heartbeat.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QToolTip>
#include <QWheelEvent>

namespace tavex2::test {
namespace {

/// The view: zoom, pan, layout, legend, real time and pictures, through the window's widgets.
class GraphCommandsTest : public MainWindowTest {
  protected:
    CWGraph& graph(const char* name) { return child<CWGraph>(name); }
    CWGraph& cwG() { return graph("cwG"); }

    void startWithATrial() {
        start();
        collect();
        QApplication::processEvents();
    }

    /// A place in the plot area: (0, 0) is the lower left corner, (1, 1) the upper right one.
    static QPoint at(CWGraph& graph, double x, double y) {
        const QRect area = graph.axisRect()->rect();
        return {area.left() + qRound(x * (area.width() - 1)), area.bottom() - qRound(y * (area.height() - 1))};
    }
    static double timeSpan(CWGraph& graph) { return graph.xMaximum() - graph.xMinimum(); }
    static double voltSpan(CWGraph& graph) { return graph.yMaximum() - graph.yMinimum(); }

    void turnWheel(CWGraph& graph, int eighthsOfADegree) {
        const QPointF place = at(graph, 0.5, 0.5);
        QWheelEvent event(place, graph.mapToGlobal(place), QPoint(), QPoint(0, eighthsOfADegree), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&graph, &event);
    }
    QMenu* askForMenu(CWGraph& graph, QContextMenuEvent::Reason reason, Qt::KeyboardModifiers modifiers = {}) {
        const QPoint place = at(graph, 0.5, 0.5);
        QContextMenuEvent event(reason, place, graph.mapToGlobal(place), modifiers);
        QApplication::sendEvent(&graph, &event);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
};

// Zoom ----------------------------------------------------------------------------------------------------------------

TEST_F(GraphCommandsTest, StartsWithTheMouseOffAndPanningUnavailable) {
    startWithATrial();
    EXPECT_FALSE(cwG().isEnabled());
    EXPECT_EQ(cwG().trackMode(), 1);
    EXPECT_FALSE(action("mnuMouseZooms").isChecked());
    EXPECT_FALSE(action("mnuMousePans").isEnabled());
    EXPECT_FALSE(button("Pan").isEnabled());
    EXPECT_TRUE(button("Zoom").isEnabled());
    const double before = timeSpan(cwG());
    QTest::mouseClick(&cwG(), Qt::LeftButton, {}, at(cwG(), 0.5, 0.5));
    EXPECT_EQ(timeSpan(cwG()), before);
}

TEST_F(GraphCommandsTest, NoGraphLooksChosenUntilTheUserChoseOne) {
    start();
    const auto chosen = [this] {
        return cwG().hasFocus() || graph("cwGLast").hasFocus() || graph("cwGAvg").hasFocus();
    };
    EXPECT_FALSE(chosen());
    QTest::keyClick(&window(), Qt::Key_Tab);
    EXPECT_TRUE(graph("cwGLast").hasFocus());
    action("mnuMouseZooms").trigger();
    cwG().setFocus();
    action("mnuMouseZooms").trigger();
    EXPECT_FALSE(chosen());
}

TEST_F(GraphCommandsTest, TheZoomButtonWaitsForATrial) {
    start();
    EXPECT_FALSE(button("Zoom").isEnabled());
}

TEST_F(GraphCommandsTest, AClickZoomsAllGraphsInOnceAndTheRightButtonOut) {
    startWithATrial();
    action("mnuMouseZooms").trigger();
    EXPECT_TRUE(action("mnuMouseZooms").isChecked());
    EXPECT_TRUE(action("mnuMousePans").isEnabled());
    const double time = timeSpan(cwG());
    const double volts = voltSpan(cwG());
    QTest::mouseClick(&cwG(), Qt::LeftButton, {}, at(cwG(), 0.5, 0.5));
    EXPECT_NEAR(timeSpan(cwG()), 0.8 * time, 1e-6);
    EXPECT_NEAR(voltSpan(cwG()), 0.8 * volts, 1e-5);
    EXPECT_NEAR(timeSpan(graph("cwGLast")), 0.8 * time, 1e-6);
    EXPECT_NEAR(timeSpan(graph("cwGAvg")), 0.8 * time, 1e-6);
    QTest::mouseClick(&cwG(), Qt::RightButton, {}, at(cwG(), 0.5, 0.5));
    EXPECT_NEAR(timeSpan(cwG()), 0.96 * time, 1e-6);
}

TEST_F(GraphCommandsTest, AHeldButtonGoesOnZoomingAndFollowsThePointerUntilItsRelease) {
    startWithATrial();
    action("mnuMouseZooms").trigger();
    const double time = timeSpan(cwG());
    auto* timer = window().findChild<QTimer*>(QStringLiteral("tmrZoom"));
    ASSERT_NE(timer, nullptr);
    EXPECT_EQ(timer->interval(), 200);
    QTest::mousePress(&cwG(), Qt::LeftButton, {}, at(cwG(), 0.5, 0.5));
    EXPECT_TRUE(timer->isActive());
    ASSERT_TRUE(waitFor([&] { return timeSpan(cwG()) < 0.65 * time; }));
    const double centre = (cwG().xMinimum() + cwG().xMaximum()) / 2;
    QTest::mouseMove(&cwG(), at(cwG(), 1, 0.5));
    QMouseEvent move(QEvent::MouseMove, QPointF(at(cwG(), 1, 0.5)), cwG().mapToGlobal(QPointF(at(cwG(), 1, 0.5))),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&cwG(), &move);
    const double span = timeSpan(cwG());
    ASSERT_TRUE(waitFor([&] { return timeSpan(cwG()) < 0.9 * span; }));
    EXPECT_GT((cwG().xMinimum() + cwG().xMaximum()) / 2, centre + 0.1 * span);
    QTest::mouseRelease(&cwG(), Qt::LeftButton, {}, at(cwG(), 1, 0.5));
    EXPECT_FALSE(timer->isActive());
}

TEST_F(GraphCommandsTest, AZoomThatIsHeldEndsWhenTheMouseIsTakenAway) {
    startWithATrial();
    action("mnuMouseZooms").trigger();
    auto* timer = window().findChild<QTimer*>(QStringLiteral("tmrZoom"));
    QTest::mousePress(&cwG(), Qt::LeftButton, {}, at(cwG(), 0.5, 0.5));
    EXPECT_TRUE(timer->isActive());
    action("mnuMouseZooms").trigger();
    EXPECT_FALSE(cwG().isEnabled());
    EXPECT_FALSE(timer->isActive());
}

TEST_F(GraphCommandsTest, ZoomingAndAutoscaleLeaveTheAutomaticScalingOn) {
    startWithATrial();
    const double time = timeSpan(cwG());
    action("mnuMouseZooms").trigger();
    QTest::mouseClick(&cwG(), Qt::LeftButton, {}, at(cwG(), 0.2, 0.5));
    action("mnuResetScale").trigger();
    EXPECT_NEAR(timeSpan(cwG()), time, 1e-6);
    EXPECT_TRUE(cwG().isEnabled()) << "the menu's command leaves the mouse as it is";
}

TEST_F(GraphCommandsTest, AViewWithoutExtentSaysThatItCannotBeZoomed) {
    startWithATrial();
    action("mnuMouseZooms").trigger();
    graph("cwGLast").setAxisRange(CWGraph::Axis::Voltage, 1, 1);
    QTest::mouseClick(&cwG(), Qt::LeftButton, {}, at(cwG(), 0.5, 0.5));
    EXPECT_TRUE(status().startsWith(QLatin1String("The graph cannot be zoomed"))) << status().toStdString();
}

TEST_F(GraphCommandsTest, TheWheelZoomsAtThePointerWhenZoomingIsAllowed) {
    startWithATrial();
    const double time = timeSpan(cwG());
    turnWheel(cwG(), 120);
    turnWheel(graph("cwGLast"), 120);
    EXPECT_EQ(timeSpan(cwG()), time) << "not allowed yet";
    action("mnuMouseZooms").trigger();
    turnWheel(cwG(), 120);
    EXPECT_NEAR(timeSpan(cwG()), 0.8 * time, 1e-9);
    turnWheel(graph("cwGLast"), -120);
    EXPECT_NEAR(timeSpan(cwG()), time, 1e-9);
}

TEST_F(GraphCommandsTest, WhereTheMouseDragsADoubleClickRestoresTheFullView) {
    startWithATrial();
    const double time = timeSpan(cwG());
    button("Zoom").click();
    turnWheel(cwG(), 480);
    ASSERT_LT(timeSpan(cwG()), 0.5 * time);
    doubleClick(cwG(), at(cwG(), 0.5, 0.5));
    EXPECT_NEAR(timeSpan(cwG()), time, 1e-6);
}

TEST_F(GraphCommandsTest, WherePressesZoomEachPressOfAFastHandCounts) {
    startWithATrial();
    const double time = timeSpan(cwG());
    action("mnuMouseZooms").trigger();
    doubleClick(cwG(), at(cwG(), 0.5, 0.5));
    EXPECT_NEAR(timeSpan(cwG()), 0.64 * time, 1e-6);
    EXPECT_FALSE(window().findChild<QTimer*>(QStringLiteral("tmrZoom"))->isActive());
    QTest::mouseClick(&cwG(), Qt::LeftButton, Qt::ShiftModifier, at(cwG(), 0.5, 0.5));
    EXPECT_NEAR(timeSpan(cwG()), 0.512 * time, 1e-6) << "Shift makes no difference";
}

TEST_F(GraphCommandsTest, KeysMoveAndZoomTheViewAlsoWhileTheMouseMayNot) {
    startWithATrial();
    const double left = cwG().xMinimum();
    const double time = timeSpan(cwG());
    const double low = cwG().yMinimum();
    QTest::keyClick(&window(), Qt::Key_Right);
    EXPECT_NEAR(cwG().xMinimum(), left + 0.1 * time, 1e-9);
    QTest::keyClick(&window(), Qt::Key_Left);
    EXPECT_NEAR(cwG().xMinimum(), left, 1e-9);
    QTest::keyClick(&window(), Qt::Key_Up);
    EXPECT_GT(cwG().yMinimum(), low);
    QTest::keyClick(&window(), Qt::Key_Down);
    EXPECT_NEAR(cwG().yMinimum(), low, 1e-9);
    QTest::keyClick(&graph("cwGLast"), Qt::Key_Plus);
    EXPECT_NEAR(timeSpan(cwG()), 0.8 * time, 1e-9);
    QTest::keyClick(&window(), Qt::Key_Minus);
    EXPECT_NEAR(timeSpan(cwG()), time, 1e-9);
    QTest::keyClick(&window(), Qt::Key_Minus);
    QTest::keyClick(&window(), Qt::Key_Home);
    EXPECT_NEAR(timeSpan(cwG()), time, 1e-6);
}

TEST_F(GraphCommandsTest, TheZoomButtonZoomsIntoARectangleOnAllGraphs) {
    startWithATrial();
    button("Zoom").click();
    EXPECT_TRUE(cwG().isEnabled());
    EXPECT_EQ(cwG().trackMode(), 6);
    EXPECT_TRUE(button("Pan").isEnabled());
    const double left = cwG().xMinimum();
    const double time = timeSpan(cwG());
    QTest::mousePress(&cwG(), Qt::LeftButton, {}, at(cwG(), 0.25, 0.75));
    QMouseEvent move(QEvent::MouseMove, QPointF(at(cwG(), 0.5, 0.25)), cwG().mapToGlobal(QPointF(at(cwG(), 0.5, 0.25))),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&cwG(), &move);
    QTest::mouseRelease(&cwG(), Qt::LeftButton, {}, at(cwG(), 0.5, 0.25));
    EXPECT_NEAR(cwG().xMinimum(), left + 0.25 * time, 0.01 * time);
    EXPECT_NEAR(cwG().xMaximum(), left + 0.5 * time, 0.01 * time);
    EXPECT_EQ(graph("cwGLast").xMinimum(), cwG().xMinimum());
    EXPECT_EQ(graph("cwGAvg").yMaximum(), cwG().yMaximum());
}

TEST_F(GraphCommandsTest, ThePanButtonLetsADragMoveAllGraphs) {
    startWithATrial();
    button("Zoom").click();
    button("Pan").click();
    EXPECT_EQ(cwG().trackMode(), 3);
    const double left = cwG().xMinimum();
    const double time = timeSpan(cwG());
    QTest::mousePress(&cwG(), Qt::LeftButton, {}, at(cwG(), 0.5, 0.5));
    QMouseEvent move(QEvent::MouseMove, QPointF(at(cwG(), 0.25, 0.5)), cwG().mapToGlobal(QPointF(at(cwG(), 0.25, 0.5))),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&cwG(), &move);
    QTest::mouseRelease(&cwG(), Qt::LeftButton, {}, at(cwG(), 0.25, 0.5));
    EXPECT_NEAR(cwG().xMinimum(), left + 0.25 * time, 0.02 * time);
    EXPECT_NEAR(timeSpan(cwG()), time, 1e-9);
    EXPECT_EQ(graph("cwGLast").xMinimum(), cwG().xMinimum());

    button("Reset").click();
    EXPECT_FALSE(cwG().isEnabled());
    EXPECT_EQ(cwG().trackMode(), 0);
    EXPECT_FALSE(button("Pan").isEnabled());
    EXPECT_NEAR(cwG().xMinimum(), 0, 1e-9);
}

TEST_F(GraphCommandsTest, MenuCommandsSwitchTheTrackingMode) {
    startWithATrial();
    action("mnuMouseZooms").trigger();
    action("mnuMousePans").trigger();
    EXPECT_TRUE(action("mnuMousePans").isChecked());
    EXPECT_EQ(cwG().trackMode(), 3);
    action("mnuMousePans").trigger();
    EXPECT_EQ(cwG().trackMode(), 0);
    action("mnuZooms").trigger();
    EXPECT_TRUE(action("mnuZooms").isChecked());
    EXPECT_EQ(cwG().trackMode(), 6);
    action("mnuZooms").trigger();
    EXPECT_EQ(cwG().trackMode(), 1);
    EXPECT_FALSE(cwG().isEnabled());
}

TEST_F(GraphCommandsTest, TheValueUnderThePointerStandsInTheStatusBarAlsoWhileTheMouseMayNotZoom) {
    start({"Channels=3", "Duration=0.05", "DIOMask=0"});
    collect();
    QApplication::processEvents();
    const auto moveTo = [this](const QPoint& place) {
        QMouseEvent move(QEvent::MouseMove, QPointF(place), cwG().mapToGlobal(QPointF(place)), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&cwG(), &move);
    };
    moveTo(at(cwG(), 0.5, 0.5));
    const QString text = child<QLabel>("PointerPanel").text();
    EXPECT_TRUE(text.startsWith(QLatin1String("0.025 s, "))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(QLatin1String(" V, channel 3"))) << text.toStdString();
    moveTo(QPoint(1, 1));
    EXPECT_EQ(child<QLabel>("PointerPanel").text(), QString());
}

// Layout and legend ---------------------------------------------------------------------------------------------------

TEST_F(GraphCommandsTest, TheViewMenuHidesAndShowsGraphsAndSharesTheHeight) {
    start();
    const int whole =
        child<QWidget>("cwG").height() + child<QWidget>("cwGLast").height() + child<QWidget>("cwGAvg").height();
    EXPECT_NEAR(cwG().height(), whole / 2.0, 1);
    EXPECT_NEAR(graph("cwGLast").height(), whole / 4.0, 1);
    EXPECT_EQ(graph("cwGLast").geometry().top(), cwG().geometry().bottom() + 1);
    EXPECT_EQ(graph("cwGAvg").geometry().top(), graph("cwGLast").geometry().bottom() + 1);

    action("mnuLastTrial").trigger();
    EXPECT_FALSE(graph("cwGLast").isVisible());
    EXPECT_FALSE(action("mnuLastTrial").isChecked());
    EXPECT_NEAR(cwG().height(), whole / 2.0, 1);
    EXPECT_NEAR(graph("cwGAvg").height(), whole / 2.0, 1);
    EXPECT_EQ(graph("cwGAvg").geometry().top(), cwG().geometry().bottom() + 1);

    action("mnuAveragedTrials").trigger();
    EXPECT_FALSE(graph("cwGAvg").isVisible());
    EXPECT_NEAR(cwG().height(), whole, 1);
    action("mnuLastTrial").trigger();
    EXPECT_TRUE(graph("cwGLast").isVisible());
    EXPECT_TRUE(action("mnuLastTrial").isChecked());
    EXPECT_EQ(cwG().width(), graph("cwGLast").width());
}

TEST_F(GraphCommandsTest, AWindowWiderThanItsTwipsCanSayIsFilledAllTheSame) {
    start();
    window().resize(4000, 1400);
    QApplication::processEvents();
    EXPECT_GT(cwG().width(), 3900);
}

TEST_F(GraphCommandsTest, TheWindowSpringsBackToItsSizeAtStart) {
    start();
    const QSize atStart = window().size();
    window().resize(300, 200);
    EXPECT_EQ(window().size(), atStart);
    window().resize(atStart + QSize(50, 60));
    EXPECT_EQ(window().size(), atStart + QSize(50, 60));
}

TEST_F(GraphCommandsTest, TheLegendFollowsItsMenuItemItsButtonAndItsKey) {
    start();
    auto& legend = child<QWidget>("frmLegend");
    action("mnuLegend").trigger();
    EXPECT_TRUE(legend.isVisible());
    EXPECT_EQ(legend.windowTitle(), QStringLiteral("Legend"));
    EXPECT_FALSE(legend.isModal());
    EXPECT_TRUE(action("mnuLegend").isChecked());
    EXPECT_TRUE(button("Legend").isChecked());
    button("Legend").click();
    EXPECT_FALSE(legend.isVisible());
    EXPECT_FALSE(action("mnuLegend").isChecked());
    EXPECT_FALSE(button("Legend").isChecked());
    QTest::keyClick(&cwG(), Qt::Key_L);
    EXPECT_TRUE(legend.isVisible());
    EXPECT_TRUE(button("Legend").isChecked());
}

TEST_F(GraphCommandsTest, AfterTheLegendsCloseBoxTheNextCommandOnlyTurnsTheFlagBack) {
    start();
    auto& legend = child<QWidget>("frmLegend");
    action("mnuLegend").trigger();
    legend.close();
    EXPECT_FALSE(legend.isVisible());
    EXPECT_FALSE(button("Legend").isChecked());
    EXPECT_FALSE(action("mnuLegend").isChecked());
    action("mnuLegend").trigger();
    EXPECT_FALSE(legend.isVisible());
    EXPECT_FALSE(action("mnuLegend").isChecked());
    EXPECT_FALSE(button("Legend").isChecked());
    action("mnuLegend").trigger();
    EXPECT_TRUE(legend.isVisible());
    EXPECT_TRUE(action("mnuLegend").isChecked());
}

TEST_F(GraphCommandsTest, TheLegendShowsSixteenColoursWithTheirNumbers) {
    start();
    action("mnuLegend").trigger();
    auto& legend = child<QWidget>("frmLegend");
    const QImage picture = legend.grab().toImage();
    const double scale = picture.devicePixelRatio();
    for (int channel = 0; channel < 16; ++channel) {
        auto* swatch = legend.findChild<QWidget*>(QStringLiteral("shpColour_%1").arg(channel));
        ASSERT_NE(swatch, nullptr);
        const QPointF centre = QRectF(swatch->geometry()).center() * scale;
        const Rgb colour = traceColour(channel);
        EXPECT_EQ(picture.pixel(centre.toPoint()), qRgb(colour.red, colour.green, colour.blue)) << channel;
        auto* number = legend.findChild<QLabel*>(QStringLiteral("lblChannel_%1").arg(channel));
        ASSERT_NE(number, nullptr);
        EXPECT_EQ(number->text(), QString::number(channel));
        EXPECT_GE(number->width(), number->fontMetrics().horizontalAdvance(number->text()));
        EXPECT_TRUE(legend.rect().contains(number->geometry()));
    }
}

TEST_F(GraphCommandsTest, TheLegendsToolTipsHaveTheColoursOfToolTipsAndNotOfTheSwatch) {
    start();
    action("mnuLegend").trigger();
    auto& swatch = child<QWidget>("shpColour_0"); // black, as the letters of a tool tip may be
    QToolTip::showText(swatch.mapToGlobal(swatch.rect().center()), swatch.toolTip(), &swatch);
    QWidget* tip = nullptr;
    ASSERT_TRUE(waitFor([&] {
        for (QWidget* each : QApplication::topLevelWidgets())
            if (each->inherits("QTipLabel") && each->isVisible()) tip = each;
        return tip != nullptr;
    }));
    const QImage picture = tip->grab().toImage();
    int ground = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ground += picture.pixelColor(x, y) == QToolTip::palette().color(QPalette::ToolTipBase) ? 1 : 0;
    EXPECT_GT(ground, picture.width() * picture.height() / 2);
    QToolTip::hideText();
}

TEST_F(GraphCommandsTest, ALegendLeftOfAndAboveTheScreenIsPutAtItsOrigin) {
    start();
    window().move(-window().width(), -window().height());
    action("mnuLegend").trigger();
    auto& legend = child<QWidget>("frmLegend");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&legend));
    EXPECT_EQ(legend.frameGeometry().topLeft(), QPoint(0, 0));
}

TEST_F(GraphCommandsTest, TheLegendOpensOverTheMiddleOfTheWindow) {
    start();
    window().move(200, 150);
    action("mnuLegend").trigger();
    auto& legend = child<QWidget>("frmLegend");
    const QPoint distance = legend.frameGeometry().center() - window().frameGeometry().center();
    EXPECT_LE(distance.manhattanLength(), 4);
}

// Real time -----------------------------------------------------------------------------------------------------------

TEST_F(GraphCommandsTest, TheRealTimeViewShowsTheChannelsAndStoresNothing) {
    start({"Duration=0.2", "DIOMask=0"});
    button("Realtime").click();
    EXPECT_EQ(status(), QStringLiteral("Acquiring data continuously.  Press Stop button to terminate collection."));
    EXPECT_TRUE(button("Stop").isEnabled());
    ASSERT_TRUE(waitFor([this] { return plots("cwG") == 2; }));
    EXPECT_EQ(cwG().note(), QStringLiteral("Real time, not stored"));
    EXPECT_DOUBLE_EQ(cwG().xMaximum(), 0.2);
    EXPECT_FALSE(action("mnuSave").isEnabled());
    button("Stop").click();
    EXPECT_EQ(status(), QStringLiteral("Stopped"));
    EXPECT_FALSE(button("Stop").isEnabled());
    EXPECT_EQ(plots("cwG"), 2) << "the last picture stays";
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Tavex2")) << "no trial has a name";
    window().close();
    EXPECT_FALSE(window().isVisible()) << "nothing is asked";
}

TEST_F(GraphCommandsTest, AfterTheRealTimeViewAutoscaleShowsTheTrialAgain) {
    startWithATrial();
    const auto trial = cwG().pyramid();
    button("Realtime").click();
    ASSERT_TRUE(waitFor([&] { return cwG().pyramid() && cwG().pyramid() != trial; }));
    action("mnuClearAverage").trigger(); // a redraw of the trials leaves the view alone
    EXPECT_FALSE(cwG().note().isEmpty());
    button("Stop").click();
    EXPECT_TRUE(cwG().note().contains(QLatin1String("not stored")));
    action("mnuResetScale").trigger();
    ASSERT_TRUE(cwG().pyramid());
    EXPECT_EQ(cwG().pyramid()->trial(), trial->trial());
    EXPECT_EQ(cwG().note(), QString());
}

TEST_F(GraphCommandsTest, TheLastPictureOfTheRealTimeViewStaysUntilSomethingReplacesIt) {
    startWithATrial();
    const auto trial = cwG().pyramid();
    button("Realtime").click();
    ASSERT_TRUE(waitFor([&] { return cwG().pyramid() != trial; }));
    EXPECT_NE(cwG().pyramid(), nullptr) << "the trial stays until there is something to see";
    button("Stop").click();
    const auto picture = cwG().pyramid();
    action("mnuClearAverage").trigger();
    EXPECT_EQ(cwG().pyramid(), picture) << "clearing the average replaces nothing here";
    EXPECT_FALSE(cwG().note().isEmpty());
    collect();
    EXPECT_NE(cwG().pyramid(), picture);
    EXPECT_EQ(cwG().note(), QString());
}

TEST_F(GraphCommandsTest, CollectingEndsTheRealTimeView) {
    start();
    button("Realtime").click();
    ASSERT_TRUE(waitFor([this] { return plots("cwG") == 2; }));
    collect();
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Trial0001 (Unsaved)"));
    EXPECT_EQ(cwG().note(), QString());
    EXPECT_TRUE(cwG().accessibleDescription().contains(QLatin1String("51 samples")));
}

TEST_F(GraphCommandsTest, TheWindowAnswersWhileSixteenFastChannelsRun) {
    start({"Channels=0:15", "Rate=100000", "Duration=1", "DIOMask=0"});
    button("Realtime").click();
    ASSERT_TRUE(waitFor([this] { return plots("cwG") == 16; }));
    Heartbeat heart;
    int pictures = 0; // that the window has drawn between two beats
    auto shown = cwG().pyramid();
    heart.onBeat = [&] {
        if (cwG().pyramid() != std::exchange(shown, cwG().pyramid())) ++pictures;
    };
    ASSERT_TRUE(waitFor([&] { return pictures >= 30; }, 60000))
        << pictures << " pictures, " << heart.beats() << " beats";
    button("Stop").click();
    EXPECT_EQ(status(), QStringLiteral("Stopped"));
    EXPECT_LT(heart.longestWorkMs(), 250) << "of the processor's time between two beats";
}

// Pictures ------------------------------------------------------------------------------------------------------------

TEST_F(GraphCommandsTest, EachGraphCopiesItsPictureAlsoWhileItIsDisabled) {
    startWithATrial();
    QMenu* menu = askForMenu(cwG(), QContextMenuEvent::Mouse);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->objectName(), QStringLiteral("mnuGraph"));
    QGuiApplication::clipboard()->clear();
    menu->findChild<QAction*>(QStringLiteral("mnuCopyPicture"))->trigger();
    menu->close();
    const QImage picture = QGuiApplication::clipboard()->image();
    EXPECT_EQ(picture.size(), cwG().size() * 2);
    EXPECT_EQ(picture.pixel(1, 1), qRgb(255, 255, 255)) << "on paper";
}

TEST_F(GraphCommandsTest, AGraphIsSavedAsPngAndPdf) {
    startWithATrial();
    for (const auto& [command, name, magic] :
         {std::tuple{"mnuSavePng", "trial.png", "\x89PNG"}, std::tuple{"mnuSavePdf", "trial.pdf", "%PDF"}}) {
        QMenu* menu = askForMenu(cwG(), QContextMenuEvent::Keyboard);
        ASSERT_NE(menu, nullptr);
        const std::filesystem::path file = folder / name;
        WhenDialogOpens dialog("CommonDialog",
                               [&](QWidget& shown) { enterFileName(shown, QString::fromStdString(file.string())); });
        menu->findChild<QAction*>(QLatin1String(command))->trigger();
        menu->close();
        ASSERT_TRUE(dialog.opened());
        EXPECT_EQ(bytesOf(file).substr(0, 4), magic);
        EXPECT_GT(bytesOf(file).size(), 2000U);
    }
}

TEST_F(GraphCommandsTest, APicturesNameWithAPointGetsItsExtension) {
    startWithATrial();
    const auto save = [this](const char* command, const char* name) {
        QMenu* menu = askForMenu(cwG(), QContextMenuEvent::Keyboard);
        const QString path = QString::fromStdString((folder / name).string());
        WhenDialogOpens dialog("CommonDialog", [&](QWidget& shown) { enterFileName(shown, path); });
        menu->findChild<QAction*>(QLatin1String(command))->trigger();
        menu->close();
        EXPECT_TRUE(dialog.opened());
    };
    save("mnuSavePng", "Pilot1.5");
    EXPECT_EQ(bytesOf(folder / "Pilot1.5.png").substr(0, 4), "\x89PNG");
    save("mnuSavePdf", "Pilot1.5");
    EXPECT_EQ(bytesOf(folder / "Pilot1.5.pdf").substr(0, 4), "%PDF");
    EXPECT_FALSE(std::filesystem::exists(folder / "Pilot1.5"));

    const std::string before = bytesOf(folder / "Pilot1.5.png");
    cwG().clearPlots();
    WhenDialogOpens question("MessageBox", [](QWidget& box) {
        EXPECT_TRUE(dynamic_cast<QMessageBox&>(box).text().contains(QLatin1String("Pilot1.5.png already exists")));
        press(box, QMessageBox::No);
    });
    save("mnuSavePng", "Pilot1.5");
    EXPECT_TRUE(question.opened());
    EXPECT_EQ(bytesOf(folder / "Pilot1.5.png"), before);
}

TEST_F(GraphCommandsTest, APictureThatCannotBeWrittenSaysWhy) {
    startWithATrial();
    QMenu* menu = askForMenu(graph("cwGAvg"), QContextMenuEvent::Mouse);
    ASSERT_NE(menu, nullptr);
    WhenDialogOpens dialog("CommonDialog",
                           [](QWidget& shown) { enterFileName(shown, QStringLiteral("/proc/trial.png")); });
    WhenDialogOpens message("MessageBox", [](QWidget& box) { press(box, QMessageBox::Ok); });
    menu->findChild<QAction*>(QStringLiteral("mnuSavePng"))->trigger();
    menu->close();
    EXPECT_TRUE(dialog.opened());
    EXPECT_TRUE(message.opened());
}

TEST_F(GraphCommandsTest, WhereTheRightButtonZoomsTheMenuComesWithShift) {
    startWithATrial();
    action("mnuMouseZooms").trigger();
    EXPECT_EQ(askForMenu(cwG(), QContextMenuEvent::Mouse), nullptr);
    QMenu* menu = askForMenu(cwG(), QContextMenuEvent::Mouse, Qt::ShiftModifier);
    ASSERT_NE(menu, nullptr);
    menu->close();
    const double time = timeSpan(cwG());
    QTest::mouseClick(&cwG(), Qt::RightButton, Qt::ShiftModifier, at(cwG(), 0.5, 0.5));
    EXPECT_EQ(timeSpan(cwG()), time);
}

} // namespace
} // namespace tavex2::test
