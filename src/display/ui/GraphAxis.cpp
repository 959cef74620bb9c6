#include "display/ui/GraphAxis.h"

#include "display/LabelScale.h"
#include "display/ui/LabelScaleTicker.h"

#include <cmath>

namespace tavex2 {

GraphAxis::GraphAxis(QCPAxis* axis)
    : QObject(axis), m_axis(axis), m_ticker(new LabelScaleTicker), m_minimum(axis->range().lower),
      m_maximum(axis->range().upper) {
    axis->setTicker(m_ticker);
    axis->setNumberFormat(QStringLiteral("gb"));
    axis->setNumberPrecision(6);
    connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, &GraphAxis::takeRange);
}

void GraphAxis::setLimits(double minimum, double maximum) {
    if (!std::isfinite(minimum) || !std::isfinite(maximum)) return;
    m_minimum = minimum;
    m_maximum = maximum;
    m_setting = true;
    m_axis->setRangeReversed(minimum > maximum);
    m_axis->setRange(std::min(minimum, maximum), std::max(minimum, maximum));
    m_setting = false;
    Q_EMIT changed();
}

void GraphAxis::takeRange(const QCPRange& range) {
    if (m_setting) return;
    m_minimum = m_axis->rangeReversed() ? range.upper : range.lower;
    m_maximum = m_axis->rangeReversed() ? range.lower : range.upper;
    Q_EMIT changed();
    Q_EMIT dragged();
}

void GraphAxis::setLabelScaleExpression(const QString& expression) {
    const std::optional<double> factor = labelScaleFactor(expression.toStdString());
    if (!factor) return;
    m_labelScaleExpression = expression;
    m_ticker->setFactor(*factor);
    Q_EMIT changed();
}

void GraphAxis::setStyle(const QColor& colour, const QFont& font) {
    const QPen pen(colour);
    m_axis->setBasePen(pen);
    m_axis->setTickPen(pen);
    m_axis->setSubTickPen(pen);
    m_axis->setLabelColor(colour);
    m_axis->setTickLabelColor(colour);
    m_axis->setLabelFont(font);
    m_axis->setTickLabelFont(font);
}

} // namespace tavex2
