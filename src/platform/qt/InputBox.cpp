#include "platform/qt/InputBox.h"

#include <QInputDialog>

namespace tavex2 {

std::optional<QString> inputBox(QWidget* parent, const QString& title, const QString& prompt, const QString& initial) {
    QInputDialog dialog(parent);
    dialog.setObjectName(QStringLiteral("InputBox"));
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(initial);
    dialog.resize(dialog.fontMetrics().horizontalAdvance(QLatin1Char('0')) * 66, dialog.sizeHint().height());
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue();
}

} // namespace tavex2
