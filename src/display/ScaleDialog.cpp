#include "display/ScaleDialog.h"

#include "display/AxisRange.h"
#include "display/Scale.h"

#include <array>
#include <cmath>

namespace tavex2 {

namespace {

using Axis = GraphControl::Axis;

/// Voltage ranges of the options of "Preset scaling".
constexpr std::array<AxisRange, 5> presets{{{-10, 10}, {-5, 5}, {0, 10}, {0, 5}, {-1, 1}}};

constexpr int milliUnit = 0; ///< index of the options "milliseconds" and "millivolts"
constexpr int wholeUnit = 1; ///< index of the options "seconds" and "volts"

} // namespace

ScaleDialog::ScaleDialog(AcqSettings& settings, const GraphControls& graphs, ZoomCommands& zoom)
    : m_settings(settings), m_graphs(graphs), m_zoom(zoom) {}

void ScaleDialog::Form_Load() {
    const SetupOptions& setup = m_settings.setup;
    // Selecting an option resets its factor, so the factors are set afterwards.
    const bool inVolts = setup.DisplayInVolts;
    optVolts_Click(inVolts ? wholeUnit : milliUnit);
    VoltsFactor = inVolts ? 1.0F : 1000.0F;
    const bool inSeconds = setup.DisplayInSeconds;
    optTime_Click(inSeconds ? wholeUnit : milliUnit);
    TimeFactor = inSeconds ? 1.0F : 1000.0F;
    if (setup.DisplayAutoScale) chkAutoScale_Click(true);
    optScale_Click(setup.DisplayPreset);
    m_controls.fraScaleTypeEnabled = !m_controls.chkAutoScale;

    const auto volts = static_cast<double>(VoltsFactor);
    const auto time = static_cast<double>(TimeFactor);
    m_controls.cwnUpper = volts * m_graphs.cwG.axisMaximum(Axis::Voltage);
    m_controls.cwnLower = volts * m_graphs.cwG.axisMinimum(Axis::Voltage);
    m_controls.cwnLeft = time * m_graphs.cwG.axisMinimum(Axis::Time);
    m_controls.cwnRight = time * m_graphs.cwG.axisMaximum(Axis::Time);
}

void ScaleDialog::optTime_Click(int index) {
    if (index == m_controls.optTime) return;
    m_controls.optTime = index;
    TimeFactor = 1.0F;
    if (index != milliUnit && index != wholeUnit) return;
    const bool inSeconds = index == wholeUnit;
    for (double* box : {&m_controls.cwnLeft, &m_controls.cwnRight})
        *box = inSeconds ? *box / 1000 : *box * 1000;
    labelTime(inSeconds, m_graphs);
    m_settings.setup.DisplayInSeconds = inSeconds;
    m_controls.leftFormat = inSeconds ? "0 \"s\"" : "0 \"ms\"";
    m_controls.rightFormat = m_controls.leftFormat;
}

void ScaleDialog::optVolts_Click(int index) {
    if (index == m_controls.optVolts) return;
    m_controls.optVolts = index;
    VoltsFactor = 1.0F;
    if (index != milliUnit && index != wholeUnit) return;
    const bool inVolts = index == wholeUnit;
    for (double* box : {&m_controls.cwnUpper, &m_controls.cwnLower})
        *box = inVolts ? *box / 1000 : *box * 1000;
    labelVoltage(inVolts, m_graphs);
    m_settings.setup.DisplayInVolts = inVolts;
    m_controls.voltageFormat = inVolts ? "0 \"V\"" : "0 \"mV\"";
}

void ScaleDialog::optScale_Click(int index) {
    m_controls.optScale = index;
    m_settings.setup.DisplayPreset = static_cast<std::int16_t>(index);
}

void ScaleDialog::chkAutoScale_Click(bool ticked) {
    m_controls.chkAutoScale = ticked;
    m_controls.boxesEnabled = !ticked;
    m_controls.fraScaleTypeEnabled = !ticked;
}

Result<void> ScaleDialog::cmdOK_Click() {
    if (!m_controls.chkAutoScale) return applyLimits();
    if (Result<void> fitted = fitGraphs(m_settings.sampling, m_graphs); !fitted) return fitted;
    m_settings.setup.DisplayAutoScale = true;
    return {};
}

Result<void> ScaleDialog::applyLimits() {
    // The preset goes before what was typed.
    const auto preset = static_cast<std::size_t>(m_settings.setup.DisplayPreset);
    if (preset < presets.size()) {
        m_controls.cwnUpper = presets[preset].maximum;
        m_controls.cwnLower = presets[preset].minimum;
    }
    // The time labels follow the voltage option here, not that of the time.
    const bool milliVolts = m_controls.optVolts == milliUnit;
    for (GraphControl* graph : m_graphs.all())
        graph->setLabelScaleExpression(Axis::Time, milliVolts ? "*1000" : "*1");

    m_controls.cwnLower /= static_cast<double>(VoltsFactor);
    m_controls.cwnUpper /= static_cast<double>(VoltsFactor);
    const auto timeFactor = static_cast<double>(TimeFactor);
    for (GraphControl* graph : m_graphs.all()) {
        graph->setAxisRange(Axis::Time, m_controls.cwnLeft / timeFactor, m_controls.cwnRight / timeFactor);
        graph->setAxisRange(Axis::Voltage, m_controls.cwnLower, m_controls.cwnUpper);
        graph->setAutoScale(Axis::Time, m_controls.chkAutoScale);
        graph->setAutoScale(Axis::Voltage, m_controls.chkAutoScale);
    }

    const float extent = fullTimeExtentSeconds(m_settings.sampling);
    if (!std::isfinite(extent))
        return Error{ErrorKind::InvalidValue, "Repeats x duration is no number. Correct it in the setup."};
    // As shown in the boxes, and in single precision, in which the extent is kept.
    if (m_controls.cwnLeft > 0 || static_cast<float>(m_controls.cwnRight) < extent) m_zoom.allowPanning();
    m_settings.setup.DisplayAutoScale = false;
    return {};
}

} // namespace tavex2
