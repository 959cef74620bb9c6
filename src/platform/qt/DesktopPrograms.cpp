#include "platform/qt/DesktopPrograms.h"

#include <QStandardPaths>

#include <initializer_list>

namespace tavex2 {

namespace {

QString firstOf(std::initializer_list<const char*> names) {
    for (const char* name : names)
        if (QString program = QStandardPaths::findExecutable(QLatin1String(name)); !program.isEmpty()) return program;
    return {};
}

} // namespace

QString textEditor() {
    return firstOf({"gnome-text-editor", "gedit", "kate", "kwrite", "mousepad", "xed", "pluma", "featherpad", "leafpad",
                    "geany", "gvim", "emacs"});
}

QString helpViewer() {
    return firstOf({"yelp", "khelpcenter"});
}

QString systemInformationViewer() {
    return firstOf({"kinfocenter", "hardinfo", "hardinfo2", "lshw-gtk"});
}

} // namespace tavex2
