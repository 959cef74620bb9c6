#pragma once

#include <QString>

namespace tavex2 {

// What desktops offer under names of their own: the first one that this machine has, with its folder; empty when it has
// none.

QString textEditor();
QString helpViewer();
QString systemInformationViewer();

} // namespace tavex2
