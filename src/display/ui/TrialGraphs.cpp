#include "display/ui/TrialGraphs.h"

#include "display/AxisRange.h"

namespace tavex2 {

namespace {

void prepare(CWGraph& graph, const QString& timeCaption, const QString& name, const QString& hint) {
    graph.setAxisCaption(CWGraph::Axis::Time, timeCaption);
    graph.setAxisCaption(CWGraph::Axis::Voltage, QStringLiteral("Voltage (volts)"));
    if (graph.accessibleName().isEmpty()) graph.setAccessibleName(name);
    // Setting the text describes the graph anew, under its name.
    graph.setEmptyText(graph.emptyText().isEmpty() ? hint : graph.emptyText());
}

TrialData samplesOf(const TrialPtr& trial) {
    return trial ? trial->samples : nullptr;
}

double intervalOf(const TrialPtr& trial) {
    return sampleIntervalSeconds(trial ? trial->sampling : SamplingSettings{});
}

} // namespace

TrialGraphs::TrialGraphs(CWGraph& cwG, CWGraph& cwGLast, CWGraph& cwGAvg)
    : m_cwG(cwG), m_cwGLast(cwGLast), m_cwGAvg(cwGAvg) {
    prepare(cwG, QStringLiteral("Current Trial (seconds)"), QStringLiteral("Current trial"),
            QStringLiteral("Press Collect (Space)"));
    // Two blanks until the time unit is applied for the first time.
    prepare(cwGLast, QStringLiteral("Last Trial  (seconds)"), QStringLiteral("Last trial"),
            QStringLiteral("The trial before the current one"));
    prepare(cwGAvg, QStringLiteral("Saved Trials Average (seconds)"), QStringLiteral("Saved trials average"),
            QStringLiteral("The average of the trials that you save"));
}

void TrialGraphs::RedrawTrials(const ProgramState& state) {
    const TrialBuffers& trials = state.trials;
    const TrialAverage& average = trials.average;

    // All are looked up before the first graph changes, because a trial moves from one graph to another.
    const auto current = pyramidOf(samplesOf(trials.CurrentTrial));
    const bool same = samplesOf(trials.LastTrial) == samplesOf(trials.CurrentTrial);
    const auto last = same ? current : pyramidOf(samplesOf(trials.LastTrial));
    const auto mean = average.empty() ? nullptr : pyramidOf(average.AverageSum);

    const bool watching = state.RealTimeMode();
    const bool watched = !m_cwG.note().isEmpty() && samplesOf(trials.CurrentTrial) == m_current;
    const bool keepsPicture = watching || watched;
    if (!keepsPicture) {
        m_cwG.plot(current, intervalOf(trials.CurrentTrial));
        m_cwG.setNote(QString());
        m_current = samplesOf(trials.CurrentTrial);
    }
    m_cwGLast.plot(last, intervalOf(trials.LastTrial));
    m_cwGAvg.plot(mean, sampleIntervalSeconds(average.AverageSettings),
                  average.empty() ? 1.0 : 1.0 / average.AverageCount);

    if (!state.settings.setup.DisplayAutoScale) return;
    if (m_cwG.plotCount() == 0)
        m_cwG.setAxisRange(CWGraph::Axis::Time, 0, static_cast<double>(fullTimeExtentSeconds(state.settings.sampling)));
    for (CWGraph* graph : {&m_cwG, &m_cwGLast, &m_cwGAvg}) {
        if (graph == &m_cwG && keepsPicture) continue;
        graph->rescaleOnce(CWGraph::Axis::Time);
        graph->rescaleOnce(CWGraph::Axis::Voltage);
    }
    alignEmptyGraphs();
}

void TrialGraphs::showCurrentTrial(const ProgramState& state) {
    m_cwG.setNote(QString());
    RedrawTrials(state);
}

void TrialGraphs::alignEmptyGraphs() {
    for (CWGraph* graph : {&m_cwGLast, &m_cwGAvg})
        if (graph->plotCount() == 0) graph->setAxisRange(CWGraph::Axis::Time, m_cwG.xMinimum(), m_cwG.xMaximum());
}

std::shared_ptr<const TrialPyramid> TrialGraphs::pyramidOf(const TrialData& trial) const {
    if (!trial) return nullptr;
    for (const CWGraph* graph : {&m_cwG, &m_cwGLast, &m_cwGAvg})
        if (graph->pyramid() && graph->pyramid()->trial() == trial) return graph->pyramid();
    return std::make_shared<const TrialPyramid>(trial);
}

} // namespace tavex2
