#include "platform/qt/CWNumEdit.h"

#include "base/NumberFormat.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace tavex2 {

namespace {

/// The shortest text that reads back as the number: as the single-precision one where it is one, so that 0.05 s of the
/// settings does not come up as 0.05000000074505806.
QString plainText(double value) {
    const auto single = static_cast<float>(value);
    return static_cast<double>(single) == value ? QString::number(value, 'g', 7)
                                                : QString::number(value, 'g', QLocale::FloatingPointShortest);
}

} // namespace

CWNumEdit::CWNumEdit(QWidget* parent) : QAbstractSpinBox(parent) {
    connect(lineEdit(), &QLineEdit::textEdited, this, &CWNumEdit::takeText);
    connect(lineEdit(), &QLineEdit::inputRejected, this, &CWNumEdit::sayRange);
    showValue();
}

void CWNumEdit::setValue(double value) {
    const bool changed = value != m_value;
    m_value = value;
    showValue();
    if (changed) Q_EMIT valueChanged(m_value);
}

void CWNumEdit::setFormat(const QString& format) {
    m_format = format.toStdString();
    showValue();
}

void CWNumEdit::setRange(double lowest, double highest) {
    m_lowest = lowest;
    m_highest = highest;
}

bool CWNumEdit::bounded() const {
    return std::isfinite(m_lowest) && std::isfinite(m_highest);
}

QString CWNumEdit::rangeText() const {
    return tr("%1 to %2%3").arg(plainText(m_lowest), plainText(m_highest), QString::fromStdString(unitOf(m_format)));
}

/// Tells what can be entered, after something that cannot.
void CWNumEdit::sayRange() {
    if (bounded()) QToolTip::showText(mapToGlobal(QPoint(0, height())), tr("Allowed: %1").arg(rangeText()), this);
}

/// Tenths of the value's order of magnitude: 2.5 moves by 0.1, 2500 by 100; whole numbers by one at least.
void CWNumEdit::stepBy(int steps) {
    const double size = std::abs(m_value);
    double step = size < 1e-6 ? 0.1 : std::pow(10.0, std::floor(std::log10(size) + 1e-9) - 1);
    if (m_whole) step = std::max(step, 1.0);
    setValue(std::clamp(std::round(m_value / step + steps) * step, m_lowest, m_highest));
    selectAll();
}

/// A number that more digits can only carry further away is refused; one that they may still bring into the range, or
/// that is not complete, can be typed on.
QValidator::State CWNumEdit::validate(QString& input, int&) const {
    const QString unit = QString::fromStdString(unitOf(m_format));
    for (const QChar each : input) {
        const bool ofNumber = each.isDigit() || QStringLiteral("+- ").contains(each) ||
                              (!m_whole && QStringLiteral(".,eE").contains(each));
        if (!ofNumber && !unit.contains(each)) return QValidator::Invalid;
    }
    const auto typed = parseNumber(input.toStdString(), m_format);
    if (!typed) return QValidator::Intermediate;
    if ((*typed > m_highest && m_highest >= 0) || (*typed < m_lowest && m_lowest <= 0)) return QValidator::Invalid;
    return inRange(*typed) ? QValidator::Acceptable : QValidator::Intermediate;
}

QSize CWNumEdit::sizeHint() const {
    ensurePolished();
    constexpr int characters = 12;
    const QSize text(fontMetrics().horizontalAdvance(QLatin1Char('0')) * characters, lineEdit()->sizeHint().height());
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option, text, this);
}

void CWNumEdit::takeText(const QString& text) {
    const auto typed = parseNumber(text.toStdString(), m_format);
    if (!typed || !inRange(*typed) || *typed == m_value) return;
    m_value = *typed;
    Q_EMIT valueChanged(m_value);
}

void CWNumEdit::showValue() {
    lineEdit()->setText(hasFocus() ? plainText(m_value) : QString::fromStdString(formatNumber(m_value, m_format)));
}

bool CWNumEdit::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QAbstractSpinBox::event(event);
    QStringList lines;
    if (!toolTip().isEmpty()) lines << toolTip();
    lines << tr("Value: %1").arg(plainText(m_value));
    if (bounded()) lines << tr("Allowed: %1").arg(rangeText());
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), lines.join(QLatin1Char('\n')), this);
    return true;
}

void CWNumEdit::focusInEvent(QFocusEvent* event) {
    QAbstractSpinBox::focusInEvent(event);
    showValue();
    selectAll();
}

void CWNumEdit::focusOutEvent(QFocusEvent* event) {
    QAbstractSpinBox::focusOutEvent(event);
    const auto typed = parseNumber(text().toStdString(), m_format);
    if (!typed || !inRange(*typed)) sayRange();
    showValue();
}

} // namespace tavex2
