#pragma once

#include "base/Windows1252.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QPushButton>
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

/// Asks for a text that goes into a file; empty after Cancel. The user is told, once for the text, when it has
/// characters that files cannot hold.
std::string askFileText(QWidget* form, const QString& title, const QString& prompt, const std::string& proposal);

/// Runs `edit` when Enter or F2 is pressed on a list or grid that has the focus, for those who do not click.
template <class Edit>
void whenEntered(QWidget* list, const Edit& edit) {
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2}) {
        auto* shortcut = new QShortcut(QKeySequence(key), list, nullptr, nullptr, Qt::WidgetShortcut);
        QObject::connect(shortcut, &QShortcut::activated, list, edit);
    }
}

/// Adds a push button that Enter in the form does not press by itself.
template <class Command>
void addButton(QDialog& form, QHBoxLayout& row, const char* name, const QString& text, const QString& tip,
               const Command& command) {
    auto* button = new QPushButton(text, &form);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, &form, command);
    row.addWidget(button);
}

} // namespace tavex2
