#include "platform/qt/CWNumEdit.h"

#include "base/Decimal.h"
#include "base/NumberFormat.h"
#include "base/PlainText.h"

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
    return QString::number(static_cast<double>(single) == value ? shortestDouble(single) : value, 'g',
                           QLocale::FloatingPointShortest);
}

} // namespace

CWNumEdit::CWNumEdit(QWidget* parent) : QAbstractSpinBox(parent) {
    connect(lineEdit(), &QLineEdit::textEdited, this, &CWNumEdit::takeText);
    showValue();
}

void CWNumEdit::setValue(double value) {
    m_valueBeforeEditing = value;
    unmark();
    change(value);
    showValue();
}

void CWNumEdit::setFormat(const QString& format) {
    m_format = format.toStdString();
    m_entry.unit = withoutBlanks(unitOf(m_format));
    if (!m_marked) showValue();
}

void CWNumEdit::setRange(double lowest, double highest) {
    m_entry.lowest = lowest;
    m_entry.highest = highest;
}

/// Tenths of the value's order of magnitude: 2.5 moves by 0.1, 2500 by 100; whole numbers by one at least. A text that
/// is not taken is nothing to step from.
void CWNumEdit::stepBy(int steps) {
    if (m_marked) return;
    const double size = std::abs(m_value);
    double step = size < 1e-6 ? 0.1 : std::pow(10.0, std::floor(std::log10(size) + 1e-9) - 1);
    if (m_entry.whole) step = std::max(step, 1.0);
    setValue(std::clamp(std::round(m_value / step + steps) * step, m_entry.lowest, m_entry.highest));
    selectAll();
}

/// Every key is taken: a key that did nothing would make another number of what was typed.
QValidator::State CWNumEdit::validate(QString& input, int&) const {
    return readTyped(input.toStdString(), m_entry) ? QValidator::Acceptable : QValidator::Intermediate;
}

QSize CWNumEdit::sizeHint() const {
    ensurePolished();
    constexpr int characters = 12;
    const QSize text(fontMetrics().horizontalAdvance(QLatin1Char('0')) * characters, lineEdit()->sizeHint().height());
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option, text, this);
}

void CWNumEdit::change(double value) {
    if (value == m_value) return;
    m_value = value;
    Q_EMIT valueChanged(m_value);
}

void CWNumEdit::takeText(const QString& text) {
    const Result<double> typed = readTyped(text.toStdString(), m_entry);
    if (typed) {
        unmark();
        tell({});
    } else {
        mark(QString::fromStdString(typed.error().text));
    }
    change(typed ? typed.value() : m_valueBeforeEditing);
}

void CWNumEdit::mark(const QString& reason) {
    m_marked = true;
    QPalette colours = palette();
    colours.setColor(QPalette::Base, QColor(255, 214, 214));
    colours.setColor(QPalette::Text, Qt::black);
    lineEdit()->setPalette(colours);
    tell(reason);
}

void CWNumEdit::unmark() {
    if (!m_marked) return;
    m_marked = false;
    lineEdit()->setPalette(QPalette());
}

void CWNumEdit::askForCorrection() {
    setFocus();
    selectAll();
    tell(accessibleDescription());
}

/// Gives up a text that is not taken.
void CWNumEdit::restore() {
    const QString given = text();
    unmark();
    showValue();
    tell(tr("\"%1\" was not taken: the value is %2 again.")
             .arg(given, plainText(m_value) + QString::fromStdString(unitOf(m_format))));
}

/// Says it under the box, to programs that read the screen, and to the dialog.
void CWNumEdit::tell(const QString& text) {
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(mapToGlobal(QPoint(0, height())), text, this);
    setAccessibleDescription(text);
    Q_EMIT told(text);
}

void CWNumEdit::showValue() {
    lineEdit()->setText(hasFocus() ? plainText(m_value) : QString::fromStdString(formatNumber(m_value, m_format)));
}

bool CWNumEdit::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QAbstractSpinBox::event(event);
    QStringList lines;
    if (!toolTip().isEmpty()) lines << toolTip();
    if (m_marked)
        lines << accessibleDescription();
    else
        lines << tr("Value: %1").arg(plainText(m_value))
              << tr("Allowed: %1").arg(QString::fromStdString(allowedText(m_entry)));
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), lines.join(QLatin1Char('\n')), this);
    return true;
}

// The menu of the box and a look into another window are no end of the editing.

void CWNumEdit::focusInEvent(QFocusEvent* event) {
    QAbstractSpinBox::focusInEvent(event);
    if (m_marked || event->reason() == Qt::PopupFocusReason) return;
    m_valueBeforeEditing = m_value;
    showValue();
    selectAll();
}

void CWNumEdit::focusOutEvent(QFocusEvent* event) {
    QAbstractSpinBox::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason) return;
    if (!m_marked)
        showValue();
    else if (event->reason() != Qt::ActiveWindowFocusReason)
        restore();
}

} // namespace tavex2
