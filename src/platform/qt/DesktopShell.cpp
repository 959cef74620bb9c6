#include "platform/qt/DesktopShell.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace tavex2 {

bool DesktopShell::execute(const ShellRequest& request) {
    const QString file = QString::fromStdString(request.file);
    const QStringList parameters = QProcess::splitCommand(QString::fromStdString(request.parameters));
    const QString program = QStandardPaths::findExecutable(file);
    if (!program.isEmpty()) return QProcess::startDetached(program, parameters, QString::fromStdString(request.folder));
    return QDesktopServices::openUrl(QUrl::fromLocalFile(parameters.isEmpty() ? file : parameters.back()));
}

} // namespace tavex2
