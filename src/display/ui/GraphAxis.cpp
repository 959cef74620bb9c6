#include "display/ui/GraphAxis.h"

#include "display/LabelScale.h"
#include "display/ui/LabelScaleTicker.h"

#include <QFontMetrics>

#include <algorithm>
#include <cmath>

namespace tavex2 {

namespace {

/// Far below what a board resolves, and wide enough for a number of its own on every pixel.
constexpr double shareShownOfOneValue = 1e-9;

/// Breaks a text between words so that its lines are `room` pixels wide at most; a word that is wider is cut.
QString wrapped(const QString& text, int room, const QFontMetrics& metrics) {
    if (metrics.horizontalAdvance(text) <= room) return text; // with its blanks as they are
    QStringList lines;
    for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QString longer = lines.isEmpty() ? word : lines.back() + QLatin1Char(' ') + word;
        if (!lines.isEmpty() && metrics.horizontalAdvance(longer) <= room)
            lines.back() = longer;
        else
            lines.append(metrics.elidedText(word, Qt::ElideRight, room));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

GraphAxis::GraphAxis(QCPAxis* axis)
    : QObject(axis), m_axis(axis), m_ticker(new LabelScaleTicker), m_minimum(axis->range().lower),
      m_maximum(axis->range().upper) {
    axis->setTicker(m_ticker);
    axis->setNumberFormat(QStringLiteral("gb")); // exponents as powers of ten
    connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, &GraphAxis::takeRange);
}

void GraphAxis::setLimits(double minimum, double maximum) {
    if (!std::isfinite(minimum) || !std::isfinite(maximum)) return;
    m_minimum = minimum;
    m_maximum = maximum;
    m_setting = true;
    showLimits();
    m_setting = false;
    Q_EMIT changed();
}

void GraphAxis::showLimits() {
    m_axis->setRangeReversed(m_minimum > m_maximum);
    if (m_minimum == m_maximum) {
        const double reach = std::max(std::abs(m_minimum), 1.0) * shareShownOfOneValue;
        m_ticker->setOnly(m_minimum);
        m_axis->setRange(m_minimum - reach, m_minimum + reach);
    } else {
        m_ticker->setOnly(std::nullopt);
        m_axis->setRange(std::min(m_minimum, m_maximum), std::max(m_minimum, m_maximum));
    }
}

void GraphAxis::takeRange(const QCPRange& range) {
    if (m_setting) return;
    m_ticker->setOnly(std::nullopt);
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

void GraphAxis::setCaption(const QString& caption) {
    m_caption = caption;
    m_axis->setLabel(caption);
    m_captionRoom = 0; // to be suited to its room
}

bool GraphAxis::fit(int length, int captionRoom) {
    if (length == m_length && captionRoom == m_captionRoom) return false;
    m_length = length;
    m_captionRoom = captionRoom;
    m_ticker->setRoom(length, QFontMetrics(m_axis->tickLabelFont()), m_axis->orientation());
    m_axis->setLabel(wrapped(m_caption, captionRoom, QFontMetrics(m_axis->labelFont())));
    return true;
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
    m_captionRoom = 0; // the font may be another one
}

} // namespace tavex2
