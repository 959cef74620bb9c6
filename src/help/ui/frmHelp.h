#pragma once

#include "help/Manual.h"

#include <QWidget>

#include <vector>

class QLineEdit;
class QListWidget;
class QTabWidget;
class QToolBar;
class QUrl;

namespace tavex2 {

class ManualPageView;

/// The window of the user's manual: contents, index and search on the left, a page on the right. User-interface thread.
class frmHelp final : public QWidget {
    Q_OBJECT

  public:
    /// The manual outlives the window.
    explicit frmHelp(const Manual& manual);

    void showContents();
    void showSearch();
    /// A page, at the anchor behind a '#' where there is one. False when its file cannot be read.
    bool showPage(const QString& address);

  private:
    void addToolBar();
    QWidget* contentsTab();
    QWidget* indexTab();
    QWidget* searchTab();
    QListWidget* pageList(const char* name, const QString& accessibleName);
    QLineEdit* addEntry(QWidget& tab, const char* name, const QString& hint, QListWidget* below);
    void filterIndex(const QString& typed);
    void search(const QString& query);
    void followPage(const QUrl& page);

    const Manual& m_manual;
    QToolBar* m_tools;
    QTabWidget* m_sides;
    ManualPageView* m_page;
    QListWidget* m_contents = nullptr;
    QListWidget* m_index = nullptr;
    QListWidget* m_hits = nullptr;
    QLineEdit* m_query = nullptr;
};

} // namespace tavex2
