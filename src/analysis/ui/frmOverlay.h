#pragma once

#include "acquisition/records/ProgramState.h"
#include "analysis/ui/MeasuringForm.h"

class QCheckBox;
class QTreeWidget;

namespace tavex2 {

/// The modal window that lays one channel of all overlaid trials over each other, or shows their average and measures
/// that between two cursors. A list tells which colour is which trial's, and its values at the cursors.
class frmOverlay final : public MeasuringForm {
    Q_OBJECT

  public:
    /// `mainGraph` is the current trial's; its limits are taken over.
    frmOverlay(const ProgramState& state, const CWGraph& mainGraph, QWidget* mainWindow);

  protected:
    void cbChannels_Click() override;
    /// Only the average is measured.
    std::optional<Readings> measure() const override;
    /// Without averaging a line for each trial.
    Result<std::vector<ReadingsLine>> copiedLines() override;
    Result<std::vector<ReadingsLine>> copiedLinesOfAllChannels() override;

    void CursorChange() override;

  private:
    void addNames();
    void showNames();
    void chkAverage_Click();
    bool averaged() const;
    QString nameOf(int plot) const;
    double rateHz() const { return m_overlays.OverlaySettings.Rate; }
    Result<void> appendLines(int channel, std::vector<ReadingsLine>& lines) const;

    const OverlaySet& m_overlays;
    const LmbHeader& m_header;
    QCheckBox* m_average;
    QTreeWidget* m_names = nullptr;
    ChannelMeasures m_measures;
};

} // namespace tavex2
