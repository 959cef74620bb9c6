#include "platform/qt/NumberBoxes.h"

#include "platform/qt/CWNumEdit.h"

#include <QLabel>
#include <QWidget>

namespace tavex2 {

namespace {

/// The name that people see: the label of the box, or the name given to it where several labels are the same.
QString nameOf(const QWidget& dialog, const CWNumEdit& box) {
    if (!box.accessibleName().isEmpty()) return box.accessibleName() + QLatin1Char(':');
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        if (label->buddy() == &box) return label->text().remove(QLatin1Char('&'));
    return {};
}

} // namespace

NumberBoxes::NumberBoxes(QWidget& dialog) : QObject(&dialog), m_dialog(dialog) {
    for (CWNumEdit* box : dialog.findChildren<CWNumEdit*>())
        connect(box, &CWNumEdit::told, this, [this, name = nameOf(dialog, *box)](const QString& text) {
            Q_EMIT told(text.isEmpty() ? text : name + QLatin1Char(' ') + text);
        });
}

bool NumberBoxes::askForCorrection() {
    for (CWNumEdit* box : m_dialog.findChildren<CWNumEdit*>()) {
        if (!box->marked()) continue;
        box->askForCorrection();
        return true;
    }
    return false;
}

} // namespace tavex2
