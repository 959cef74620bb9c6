#include "analysis/ui/frmInfo.h"

namespace tavex2 {

frmInfo::frmInfo(const ProgramState& state, const CWGraph& mainGraph, QWidget* mainWindow)
    : MeasuringForm(QStringLiteral("frmInfo"), tr("Infomation"), mainWindow), m_trial(state.trials.CurrentTrial),
      m_rateHz(m_trial->sampling.Rate),
      m_autoScaling(state.settings.setup.DisplayAutoScale || mainGraph.autoScale(CWGraph::Axis::Voltage)) {
    fillChannels(m_trial->samples->channels(), m_trial->header);
    cbChannels_Click();
    takeLimits(mainGraph);
    if (m_autoScaling) graph().rescaleOnce(CWGraph::Axis::Voltage);
    putCursorsAtEnds(m_rateHz);
    CursorChange();
}

void frmInfo::cbChannels_Click() {
    plot(ExtractChannel(m_trial->samples, channel(), rectified()), m_rateHz);
    if (m_autoScaling) graph().rescaleOnce(CWGraph::Axis::Voltage); // channels differ in size
    m_measures = graph().pyramid() ? ChannelMeasures(graph().pyramid(), 0, m_rateHz) : ChannelMeasures();
    CursorChange();
}

std::optional<Readings> frmInfo::measure() const {
    return MeasureBetweenCursors(m_measures, cursors().sample(0), cursors().sample(1));
}

Result<std::vector<ReadingsLine>> frmInfo::copiedLines() {
    return std::vector{lineOf(m_trial->name, channel(), m_trial->header, measure())};
}

Result<std::vector<ReadingsLine>> frmInfo::copiedLinesOfAllChannels() {
    std::vector<ReadingsLine> lines;
    for (int each = 0; each < m_trial->samples->channels(); ++each) {
        const Result<TrialData> row = ExtractChannel(m_trial->samples, each, rectified());
        if (!row) return row.error();
        const ChannelMeasures measures(std::make_shared<const TrialPyramid>(row.value()), 0, m_rateHz);
        lines.push_back(lineOf(m_trial->name, each, m_trial->header,
                               MeasureBetweenCursors(measures, cursors().sample(0), cursors().sample(1))));
    }
    return lines;
}

} // namespace tavex2
