#include "platform/qt/DesktopPrograms.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <initializer_list>

namespace tavex2 {

namespace {

QString firstOf(std::initializer_list<const char*> names) {
    for (const char* name : names)
        if (QString program = QStandardPaths::findExecutable(QLatin1String(name)); !program.isEmpty()) return program;
    return {};
}

/// The words that start the program of a desktop entry without a document; empty when it has no window of its own.
QStringList commandOf(const QString& desktopEntry) {
    QFile file(desktopEntry);
    if (!file.open(QIODevice::ReadOnly)) return {};
    QStringList command;
    bool mainGroup = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('['))) mainGroup = line == QLatin1String("[Desktop Entry]");
        if (!mainGroup) continue;
        if (line == QLatin1String("Terminal=true")) return {};
        if (line.startsWith(QLatin1String("Exec="))) command = QProcess::splitCommand(line.mid(5));
    }
    // What stands for the document.
    command.removeIf([](const QString& word) { return word.startsWith(QLatin1Char('%')); });
    return command;
}

/// What the user's desktop starts for a kind of document, which its own tool knows.
QStringList defaultFor(const char* kind) {
    constexpr int longestMilliseconds = 3000;
    const QString tool = firstOf({"xdg-mime"});
    if (tool.isEmpty()) return {};
    QProcess asked;
    asked.start(tool, {QStringLiteral("query"), QStringLiteral("default"), QLatin1String(kind)});
    if (!asked.waitForFinished(longestMilliseconds)) return {};
    const QString entry = QString::fromUtf8(asked.readAllStandardOutput()).trimmed();
    if (entry.isEmpty()) return {};
    QStringList command = commandOf(QStandardPaths::locate(QStandardPaths::ApplicationsLocation, entry));
    if (command.isEmpty()) return {};
    command.front() = QStandardPaths::findExecutable(command.front());
    return command.front().isEmpty() ? QStringList() : command;
}

QStringList firstOrDefault(std::initializer_list<const char*> names, const char* kind) {
    const QString known = firstOf(names);
    return known.isEmpty() ? defaultFor(kind) : QStringList{known};
}

} // namespace

QStringList textEditor() {
    return firstOrDefault({"gnome-text-editor", "gedit", "kate", "kwrite", "mousepad", "xed", "pluma", "featherpad",
                           "leafpad", "geany", "gvim", "emacs"},
                          "text/plain");
}

QStringList helpViewer() {
    return firstOrDefault({"yelp", "khelpcenter"}, "x-scheme-handler/help");
}

QString systemInformationViewer() {
    return firstOf({"kinfocenter", "hardinfo", "hardinfo2", "lshw-gtk"});
}

} // namespace tavex2
