#include "platform/qt/QtFileDialogs.h"

#include <QFileDialog>
#include <QString>
#include <QStringList>

namespace tavex2 {

namespace {

/// "A|*.a|All|*.*|" as the toolkit writes filters: "A (*.a)", "All (*)".
QStringList nameFilters(const std::string& filter) {
    const QStringList parts = QString::fromStdString(filter).split(QLatin1Char('|'), Qt::SkipEmptyParts);
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString pattern = parts[i + 1] == QLatin1String("*.*") ? QStringLiteral("*") : parts[i + 1];
        filters << QStringLiteral("%1 (%2)").arg(parts[i], pattern);
    }
    return filters;
}

std::optional<std::filesystem::path> ask(QFileDialog& dialog, const FileDialogRequest& request) {
    dialog.setObjectName(QStringLiteral("CommonDialog"));
    dialog.setWindowTitle(QString::fromStdString(request.title));
    QString extension = QString::fromStdString(request.defaultExtension);
    if (extension.startsWith(QLatin1Char('.'))) extension.remove(0, 1);
    dialog.setDefaultSuffix(extension);
    const QStringList filters = nameFilters(request.filter);
    dialog.setNameFilters(filters);
    if (request.filterIndex < filters.size()) dialog.selectNameFilter(filters[request.filterIndex]);
    if (!request.folder.empty()) dialog.setDirectory(QString::fromStdString(request.folder.string()));
    if (!request.initialName.empty()) dialog.selectFile(QString::fromStdString(request.initialName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return std::filesystem::path(dialog.selectedFiles().constFirst().toStdString());
}

} // namespace

std::optional<std::filesystem::path> QtFileDialogs::askSaveName(const FileDialogRequest& request) {
    QFileDialog dialog(m_parent);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    return ask(dialog, request);
}

std::optional<std::filesystem::path> QtFileDialogs::askOpenName(const FileDialogRequest& request) {
    QFileDialog dialog(m_parent);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return ask(dialog, request);
}

std::optional<std::filesystem::path> QtFileDialogs::askFolder(const QString& title,
                                                              const std::filesystem::path& folder) {
    QFileDialog dialog(m_parent);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    FileDialogRequest request;
    request.title = title.toStdString();
    request.folder = folder;
    return ask(dialog, request);
}

} // namespace tavex2
