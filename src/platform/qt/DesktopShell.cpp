#include "platform/qt/DesktopShell.h"

#include "platform/SystemShell.h"
#include "platform/qt/DesktopPrograms.h"

#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace tavex2 {

namespace {

int result(bool started) {
    return started ? Shell::started : Shell::fileNotFound;
}

/// What a program is given is one name, which may hold blanks, quotes inside it and anything else.
QString withoutQuotes(const QString& text) {
    const QLatin1Char quote('"');
    return text.size() > 1 && text.startsWith(quote) && text.endsWith(quote) ? text.mid(1, text.size() - 2) : text;
}

bool openDocument(const QString& file) {
    return QDesktopServices::openUrl(file.contains(QLatin1String("://")) ? QUrl(file) : QUrl::fromLocalFile(file));
}

} // namespace

int DesktopShell::open(const ShellRequest& request) {
    const QString file = QString::fromStdString(request.file);
    const QString document = withoutQuotes(QString::fromStdString(request.parameters));
    const QString program = QStandardPaths::findExecutable(file);
    if (!program.isEmpty())
        return result(QProcess::startDetached(program, document.isEmpty() ? QStringList() : QStringList{document},
                                              QString::fromStdString(request.folder)));
    return result(!request.onlyThisProgram && openDocument(document.isEmpty() ? file : document));
}

int DesktopShell::start(const std::string& commandLine) {
    const QString whole = QString::fromStdString(commandLine);
    QStringList parts = QProcess::splitCommand(whole);
    if (parts.isEmpty()) return fileNotFound;
    const QString name = parts.takeFirst();
    if (const QString program = QStandardPaths::findExecutable(name); !program.isEmpty())
        return result(QProcess::startDetached(program, parts));
    const auto is = [&](const char* other) { return name.compare(QLatin1String(other), Qt::CaseInsensitive) == 0; };
    if (is("Explorer.exe")) return result(openDocument(whole.mid(name.size() + 1))); // the folder has no quotes
    QStringList own = is("notepad.exe") ? textEditor() : is("WinHlp32.EXE") ? helpViewer() : QStringList();
    if (own.isEmpty()) return fileNotFound;
    const QString program = own.takeFirst();
    return result(QProcess::startDetached(program, own));
}

bool DesktopShell::canRead(const std::string& folder, const std::string& name) const {
    return QFile(QString::fromStdString(pathOf(folder, name))).open(QIODevice::ReadOnly);
}

std::string DesktopShell::pathOf(const std::string& folder, const std::string& name) const {
    if (folder.empty() || folder.back() == '/') return folder + name;
    return folder + '/' + name;
}

std::unique_ptr<Shell> systemShell() {
    return std::make_unique<DesktopShell>();
}

} // namespace tavex2
