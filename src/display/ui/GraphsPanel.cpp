#include "display/ui/GraphsPanel.h"

#include "display/Scale.h"
#include "display/WindowLayout.h"
#include "platform/ChannelList.h"
#include "platform/qt/CenterForm.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tavex2 {

namespace {

constexpr double marginTwips = 90; ///< around the graphs

/// The number of the board's input at a position of the channel list; the position itself when the list does not tell.
int channelAt(const SamplingSettings& sampling, int position) {
    const auto channels = parseChannelList(sampling.Channels.trimmed(), std::numeric_limits<int>::max());
    const auto index = static_cast<std::size_t>(position);
    return channels && index < channels.value().size() ? channels.value()[index] : position;
}

} // namespace

GraphsPanel::GraphsPanel(ProgramState& state, QWidget* parent)
    : QWidget(parent), m_state(state), m_readout(state.settings.setup) {
    setFocusPolicy(Qt::ClickFocus);
    m_cwG.setObjectName(QStringLiteral("cwG"));
    m_cwGLast.setObjectName(QStringLiteral("cwGLast"));
    m_cwGAvg.setObjectName(QStringLiteral("cwGAvg"));

    const TrialBuffers& trials = m_state.trials;
    const auto samplingOf = [](const TrialPtr& trial) { return trial ? trial->sampling : SamplingSettings{}; };
    watchPointer(m_cwG, [=, this, &trials] { // the picture of a real-time view is the settings' own
        return m_cwG.note().isEmpty() ? samplingOf(trials.CurrentTrial) : m_state.settings.sampling;
    });
    watchPointer(m_cwGLast, [=, &trials] { return samplingOf(trials.LastTrial); });
    watchPointer(m_cwGAvg, [&trials] { return trials.average.AverageSettings; });
    connect(&m_readout, &PointerReadout::changed, this, &GraphsPanel::readoutChanged);
    connect(&m_realTime, &RealTimePlot::began, this, [this] {
        if (m_state.settings.setup.DisplayAutoScale) m_trials.alignEmptyGraphs();
    });
    connect(&m_mouse, &GraphMouse::failed, this, &GraphsPanel::failed);
    connect(&m_mouse, &GraphMouse::fullViewWanted, this,
            [this] { zoom([this](ZoomCommands&) { return mnuResetScale_Click(); }); });
}

void GraphsPanel::watchPointer(CWGraph& graph, std::function<SamplingSettings()> sampling) {
    m_readout.watch(graph, [sampling = std::move(sampling)](int position) { return channelAt(sampling(), position); });
}

void GraphsPanel::offerPictures(FileDialogs& dialogs, Messages& messages) {
    m_pictures.emplace(dialogs, messages);
    const TrialBuffers& trials = m_state.trials;
    const auto nameOf = [](const TrialPtr& trial) { return trial ? trial->name : std::string("Graph"); };
    m_pictures->serve(m_cwG, [=, &trials] { return nameOf(trials.CurrentTrial); });
    m_pictures->serve(m_cwGLast, [=, &trials] { return nameOf(trials.LastTrial); });
    m_pictures->serve(m_cwGAvg, [] { return std::string("Average"); });
}

void GraphsPanel::showTexts(const QString& currentHint, const QString& averageRemark) {
    if (m_cwG.emptyText() != currentHint) m_cwG.setEmptyText(currentHint);
    m_cwGAvg.setRemark(averageRemark);
}

void GraphsPanel::followDisplaySettings() {
    labelTime(m_state.settings.setup.DisplayInSeconds, controls());
    labelVoltage(m_state.settings.setup.DisplayInVolts, controls());
    RedrawTrials();
}

void GraphsPanel::beginRealTime(double windowSeconds) {
    m_realTime.begin(windowSeconds, m_state.settings.setup.DisplayAutoScale);
}

void GraphsPanel::showRealTime(const TrialData& block, double sampleIntervalSeconds) {
    m_realTime.show(block, sampleIntervalSeconds);
}

void GraphsPanel::endRealTime() {
    m_realTime.end();
    if (!m_cwG.note().isEmpty() && hasCurrentTrial(m_state))
        m_cwG.setNote(tr("Real time, not stored. Autoscale graphs (Ctrl+0) shows the trial again."));
}

Result<void> GraphsPanel::mnuResetScale_Click() {
    const bool watched = !m_cwG.note().isEmpty() && !m_state.RealTimeMode();
    if (watched && hasCurrentTrial(m_state)) m_trials.showCurrentTrial(m_state);
    return tavex2::mnuResetScale_Click(m_state.settings, controls());
}

void GraphsPanel::zoom(const std::function<Result<void>(ZoomCommands&)>& command) {
    if (const Result<void> done = command(m_zoom); !done) Q_EMIT failed(QString::fromStdString(done.error().text));
    m_mouse.showZoomState();
    Q_EMIT zoomStateChanged();
}

void GraphsPanel::zoom(void (ZoomCommands::*command)()) {
    zoom([command](ZoomCommands& commands) {
        (commands.*command)();
        return Result<void>();
    });
}

// Layout --------------------------------------------------------------------------------------------------------------

void GraphsPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Form_Resize();
}

/// The layout reckons with the frame, menu and status bar of a window around the panel; these are outside here, so the
/// room that it leaves for them is added first. Where the window is wider than its twips can say, the graphs fill it
/// all the same.
void GraphsPanel::Form_Resize() {
    const StateFlags& flags = m_state.flags;
    m_cwGLast.setVisible(flags.ShowLastTrial);
    m_cwGAvg.setVisible(flags.ShowAveragedTrials);

    const double twipsPerPixel = 1 / pixelsFromTwips(1, *this);
    const double widthTwips = width() * twipsPerPixel - 2 * marginTwips;
    const double heightTwips = height() * twipsPerPixel - 2 * marginTwips;
    if (widthTwips < 1 || heightTwips < 1) return;
    const GraphPlaces places = layoutGraphs({.width = widthTwips + marginTwips + roomBesideGraphs,
                                             .height = heightTwips + marginTwips + roomBelowGraphs,
                                             .left = marginTwips,
                                             .top = marginTwips},
                                            flags.ShowLastTrial, flags.ShowAveragedTrials);
    const double lowest = std::max({places.cwG.bottom(), flags.ShowLastTrial ? places.cwGLast.bottom() : 0,
                                    flags.ShowAveragedTrials ? places.cwGAvg.bottom() : 0});
    const double across = widthTwips / places.cwG.width / twipsPerPixel;
    const double down = heightTwips / (lowest - marginTwips) / twipsPerPixel;
    const int margin = qRound(marginTwips / twipsPerPixel);
    const auto place = [&](CWGraph& graph, const GraphPlace& at) {
        const int top = margin + qRound((at.top - marginTwips) * down);
        const int bottom = margin + qRound((at.bottom() - marginTwips) * down);
        graph.setGeometry(margin, top, qRound(at.width * across), bottom - top);
    };
    place(m_cwG, places.cwG);
    place(m_cwGLast, places.cwGLast);
    place(m_cwGAvg, places.cwGAvg);
}

} // namespace tavex2
