#include "platform/qt/CWNumEdit.h"

#include "base/NumberFormat.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <QToolTip>

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

/// Tenths of the value's order of magnitude: 2.5 moves by 0.1, 2500 by 100.
void CWNumEdit::stepBy(int steps) {
    const double size = std::abs(m_value);
    const double step = size < 1e-6 ? 0.1 : std::pow(10.0, std::floor(std::log10(size) + 1e-9) - 1);
    setValue(std::round(m_value / step + steps) * step);
    selectAll();
}

QValidator::State CWNumEdit::validate(QString& input, int&) const {
    return parseNumber(input.toStdString(), m_format) ? QValidator::Acceptable : QValidator::Intermediate;
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
    if (!typed || *typed == m_value) return;
    m_value = *typed;
    Q_EMIT valueChanged(m_value);
}

void CWNumEdit::showValue() {
    lineEdit()->setText(hasFocus() ? plainText(m_value) : QString::fromStdString(formatNumber(m_value, m_format)));
}

bool CWNumEdit::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QAbstractSpinBox::event(event);
    const QString number = tr("Value: %1").arg(plainText(m_value));
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       toolTip().isEmpty() ? number : toolTip() + QLatin1Char('\n') + number, this);
    return true;
}

void CWNumEdit::focusInEvent(QFocusEvent* event) {
    QAbstractSpinBox::focusInEvent(event);
    showValue();
    selectAll();
}

void CWNumEdit::focusOutEvent(QFocusEvent* event) {
    QAbstractSpinBox::focusOutEvent(event);
    showValue();
}

} // namespace tavex2
