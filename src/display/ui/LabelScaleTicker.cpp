#include "display/ui/LabelScaleTicker.h"

namespace tavex2 {

void LabelScaleTicker::generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                                QVector<double>& ticks, QVector<double>* subTicks, QVector<QString>* tickLabels) {
    const QCPRange shown(range.lower * m_factor, range.upper * m_factor);
    QCPAxisTicker::generate(shown, locale, formatChar, precision, ticks, subTicks, tickLabels);
    for (double& tick : ticks)
        tick /= m_factor;
    if (subTicks != nullptr)
        for (double& tick : *subTicks)
            tick /= m_factor;
}

} // namespace tavex2
