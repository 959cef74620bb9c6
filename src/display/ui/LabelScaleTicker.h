#pragma once

#include "display/ui/QCustomPlotLibrary.h"

namespace tavex2 {

/// Places the ticks of an axis at round numbers of the unit that its labels show, which is the axis's own unit times a
/// factor. Used by GraphAxis, on the user-interface thread.
class LabelScaleTicker : public QCPAxisTicker {
  public:
    double factor() const { return m_factor; }
    /// `factor` is above 0.
    void setFactor(double factor) { m_factor = factor; }

    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision, QVector<double>& ticks,
                  QVector<double>* subTicks, QVector<QString>* tickLabels) override;

  private:
    double m_factor = 1;
};

} // namespace tavex2
