#include "app/ui/RecentFilesMenu.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>

namespace tavex2 {

RecentFilesMenu::RecentFilesMenu(QMenu& parentMenu, QMenu& menu, const std::vector<std::string>& files, QObject* parent)
    : QObject(parent), m_menu(menu), m_files(files) {
    connect(&parentMenu, &QMenu::aboutToShow, this, &RecentFilesMenu::list);
    list();
}

void RecentFilesMenu::list() {
    m_menu.clear();
    int number = 0;
    for (const std::string& each : m_files) {
        const QString file = QString::fromStdString(each);
        QString name = QFileInfo(file).fileName();
        name.replace(QLatin1Char('&'), QStringLiteral("&&"));
        QAction* action = m_menu.addAction(QStringLiteral("&%1  %2").arg(++number).arg(name));
        action->setObjectName(QStringLiteral("mnuRecent_%1").arg(number - 1));
        action->setToolTip(QDir::toNativeSeparators(file));
        connect(action, &QAction::triggered, this, [this, file] { Q_EMIT chosen(file); });
    }
    m_menu.setEnabled(!m_files.empty());
}

} // namespace tavex2
