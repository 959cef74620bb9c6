#include "display/ui/LabelScaleTicker.h"

#include "base/Decimal.h"
#include "display/TickText.h"

#include <algorithm>

namespace tavex2 {

namespace {

constexpr int usualTicks = 5;
constexpr int digitsOfOnlyTick = 10;

QString textAt(double tick, double step) {
    return QString::fromStdString(tickText(tick, step));
}

} // namespace

void LabelScaleTicker::setRoom(int pixels, const QFontMetrics& metrics, Qt::Orientation orientation) {
    m_room = {pixels, metrics, orientation};
}

void LabelScaleTicker::generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                                QVector<double>& ticks, QVector<double>* subTicks, QVector<QString>* tickLabels) {
    if (m_only) {
        ticks = {*m_only};
        if (subTicks != nullptr) subTicks->clear();
        if (tickLabels != nullptr)
            *tickLabels = {QString::fromStdString(generalDecimal(*m_only * m_factor, digitsOfOnlyTick))};
        return;
    }
    const QCPRange shown(range.lower * m_factor, range.upper * m_factor);
    QCPAxisTicker::generate(shown, locale, formatChar, precision, ticks, subTicks, tickLabels);
    for (double& tick : ticks)
        tick /= m_factor;
    if (subTicks != nullptr)
        for (double& tick : *subTicks)
            tick /= m_factor;
}

/// As close to the usual number of ticks as their numbers have room.
double LabelScaleTicker::getTickStep(const QCPRange& range) {
    for (int count = usualTicks; count > 0; --count) {
        setTickCount(count);
        m_step = QCPAxisTicker::getTickStep(range);
        if (fits(range, m_step)) break;
    }
    return m_step;
}

bool LabelScaleTicker::fits(const QCPRange& range, double step) const {
    if (!m_room) return true;
    const double distance = m_room->pixels * step / range.size();
    const int height = m_room->metrics.ascent();
    if (m_room->orientation == Qt::Vertical) return distance >= height;
    const auto width = [&](double value) { return m_room->metrics.horizontalAdvance(textAt(value, step)); };
    return distance >= std::max(width(range.lower), width(range.upper)) + height;
}

QString LabelScaleTicker::getTickLabel(double tick, const QLocale&, QChar, int) {
    return textAt(tick, m_step);
}

} // namespace tavex2
