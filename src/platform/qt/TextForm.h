#pragma once

#include "base/Windows1252.h"

#include <QKeySequence>
#include <QShortcut>
#include <QString>

#include <string>

namespace tavex2 {

// What the forms share that edit texts kept in files.

/// A text of a file, which is Windows-1252, as the windows show it, and back.
inline QString fromFileText(const std::string& text) {
    return QString::fromStdString(utf8FromWindows1252(text));
}
inline std::string toFileText(const QString& text) {
    return windows1252FromUtf8(text.toStdString());
}

/// Runs `edit` when Enter or F2 is pressed on a list or grid that has the focus, for those who do not click.
template <class Edit>
void whenEntered(QWidget* list, const Edit& edit) {
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2}) {
        auto* shortcut = new QShortcut(QKeySequence(key), list, nullptr, nullptr, Qt::WidgetShortcut);
        QObject::connect(shortcut, &QShortcut::activated, list, edit);
    }
}

} // namespace tavex2
