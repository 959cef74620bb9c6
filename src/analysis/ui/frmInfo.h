#pragma once

#include "acquisition/records/ProgramState.h"
#include "analysis/ui/MeasuringForm.h"

namespace tavex2 {

/// The modal window that measures one channel of the current trial between two cursors.
class frmInfo final : public MeasuringForm {
    Q_OBJECT

  public:
    /// There is a current trial. `mainGraph` shows it; its limits are taken over.
    frmInfo(const ProgramState& state, const CWGraph& mainGraph, QWidget* mainWindow);

  protected:
    void cbChannels_Click() override;
    std::optional<Readings> measure() const override;
    Result<std::vector<ReadingsLine>> copiedLines() override;
    Result<std::vector<ReadingsLine>> copiedLinesOfAllChannels() override;

  private:
    // What is measured stays the same while the window is open, whatever arrives meanwhile.
    const TrialPtr m_trial;
    const double m_rateHz;
    const bool m_autoScaling;
    ChannelMeasures m_measures;
};

} // namespace tavex2
