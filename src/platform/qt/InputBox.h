#pragma once

#include <QString>

#include <optional>

class QWidget;

namespace tavex2 {

/// Asks for one line of text, modally; no value when the user cancelled.
std::optional<QString> inputBox(QWidget* parent, const QString& title, const QString& prompt, const QString& initial);

} // namespace tavex2
