#pragma once

#include "acquisition/records/AcqSettings.h"
#include "base/Result.h"
#include "display/GraphControl.h"
#include "display/ZoomCommands.h"

#include <string>

namespace tavex2 {

/// What the controls of the scale dialog hold and show. Boxes keep their value unrounded, whatever their format shows.
struct ScaleControls {
    int optTime = -1;  ///< 0 milliseconds, 1 seconds; -1 before the dialog is loaded
    int optVolts = -1; ///< 0 millivolts, 1 volts
    int optScale = -1; ///< preset voltage range
    bool chkAutoScale = false;
    bool boxesEnabled = true;
    bool fraScaleTypeEnabled = true;
    double cwnUpper = 0;
    double cwnLower = 0;
    double cwnLeft = 0;
    double cwnRight = 0;
    std::string voltageFormat = "#.000 \"V\""; ///< of cwnUpper and cwnLower
    std::string leftFormat = "0 \"ms\"";
    std::string rightFormat = "0 \"s\"";
};

/// The scale dialog without its window: frmScale shows controls() after each call and tells what the user did.
///
/// Units and the preset take effect at once and outlive Cancel. A unit that is chosen in the dialog leaves the boxes in
/// the new unit with a factor of 1, and OK divides by that factor: limits typed in milliseconds are then taken as
/// seconds.
class ScaleDialog {
  public:
    ScaleDialog(AcqSettings& settings, const GraphControls& graphs, ZoomCommands& zoom);

    const ScaleControls& controls() const { return m_controls; }

    /// A box was edited.
    void enterUpper(double value) { m_controls.cwnUpper = value; }
    void enterLower(double value) { m_controls.cwnLower = value; }
    void enterLeft(double value) { m_controls.cwnLeft = value; }
    void enterRight(double value) { m_controls.cwnRight = value; }

    void Form_Load();
    /// Choosing the option that is selected already does nothing.
    void optTime_Click(int index);
    void optVolts_Click(int index);
    void optScale_Click(int index);
    void chkAutoScale_Click(bool ticked);
    /// Applies the limits. The dialog closes on success; InvalidValue leaves it open with the state reached so far.
    Result<void> cmdOK_Click();

  private:
    Result<void> applyLimits();

    AcqSettings& m_settings;
    GraphControls m_graphs;
    ZoomCommands& m_zoom;
    ScaleControls m_controls;
    float VoltsFactor = 1; ///< axis values are multiplied by it to be shown in the boxes
    float TimeFactor = 1;
};

} // namespace tavex2
