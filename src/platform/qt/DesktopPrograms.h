#pragma once

#include <QString>
#include <QStringList>

namespace tavex2 {

// What desktops offer under names of their own: the first well-known one that this machine has, with its folder, else
// the one that the user's desktop starts for such documents, with its arguments. Empty when there is none.

QStringList textEditor();
QStringList helpViewer();

/// Only a well-known one, with its folder; empty when this machine has none.
QString systemInformationViewer();

} // namespace tavex2
