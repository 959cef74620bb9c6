#pragma once

#include <QObject>
#include <QString>

#include <string>
#include <vector>

class QMenu;

namespace tavex2 {

/// The submenu of the recent files: it lists them when its parent menu opens and tells which one is chosen.
class RecentFilesMenu final : public QObject {
    Q_OBJECT

  public:
    /// `files` are paths, newest first; it outlives the menu.
    RecentFilesMenu(QMenu& parentMenu, QMenu& menu, const std::vector<std::string>& files, QObject* parent);

  Q_SIGNALS:
    void chosen(const QString& file);

  private:
    void list();

    QMenu& m_menu;
    const std::vector<std::string>& m_files;
};

} // namespace tavex2
