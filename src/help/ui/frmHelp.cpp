#include "help/ui/frmHelp.h"

#include "base/PathText.h"
#include "help/ui/ManualPageView.h"

#include <QAction>
#include <QDesktopServices>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

namespace tavex2 {

namespace {

/// Where an item of a list leads to.
constexpr int addressRole = Qt::UserRole;

/// The place of the search among the sides.
constexpr int searchSide = 2;

void addItem(QListWidget& list, const QString& text, const std::string& address) {
    auto* item = new QListWidgetItem(text, &list);
    item->setData(addressRole, QString::fromStdString(address));
}

} // namespace

frmHelp::frmHelp(const Manual& manual)
    : m_manual(manual), m_tools(new QToolBar(this)), m_sides(new QTabWidget(this)), m_page(new ManualPageView(this)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(tr("Tavex2 Help"));
    m_sides->setObjectName(QStringLiteral("tabHelp"));
    m_sides->addTab(contentsTab(), tr("Con&tents"));
    m_sides->addTab(indexTab(), tr("In&dex"));
    m_sides->addTab(searchTab(), tr("&Search"));
    addToolBar();

    auto* halves = new QSplitter(this);
    halves->addWidget(m_sides);
    halves->addWidget(m_page);
    halves->setStretchFactor(1, 1);
    const int character = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    halves->setSizes({32 * character, 96 * character});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tools);
    layout->addWidget(halves, 1);
    resize(QSize(130 * character, 40 * fontMetrics().lineSpacing()).boundedTo(screen()->availableSize() * 9 / 10));

    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, &frmHelp::showSearch);
    connect(m_page, &QTextBrowser::sourceChanged, this, &frmHelp::followPage);
}

void frmHelp::addToolBar() {
    m_tools->setAccessibleName(tr("Help tool bar"));
    const auto add = [this](const char* name, const QString& text, const QKeySequence& key, const QString& tip) {
        QAction* action = m_tools->addAction(text);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(key);
        action->setToolTip(key.isEmpty() ? tip
                                         : QStringLiteral("%1 (%2)").arg(tip, key.toString(QKeySequence::NativeText)));
        return action;
    };
    QAction* back = add("actBack", tr("Back"), QKeySequence::Back, tr("The page before"));
    QAction* forward = add("actForward", tr("Forward"), QKeySequence::Forward, tr("The page after"));
    QAction* contents = add("actContents", tr("Contents"), Qt::ALT | Qt::Key_Home, tr("The table of contents"));
    QAction* larger = add("actLarger", tr("Larger"), QKeySequence::ZoomIn, tr("Larger letters"));
    QAction* smaller = add("actSmaller", tr("Smaller"), QKeySequence::ZoomOut, tr("Smaller letters"));
    QAction* browser = add("actBrowser", tr("In the web browser"), {}, tr("Open this page in the web browser"));
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(back, &QAction::triggered, m_page, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, m_page, &QTextBrowser::forward);
    connect(m_page, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_page, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(contents, &QAction::triggered, this, &frmHelp::showContents);
    connect(larger, &QAction::triggered, m_page, [this] { m_page->zoomIn(); });
    connect(smaller, &QAction::triggered, m_page, [this] { m_page->zoomOut(); });
    connect(browser, &QAction::triggered, m_page, [this] { QDesktopServices::openUrl(m_page->source()); });
}

/// A list whose items lead to pages, by a click or by Enter.
QListWidget* frmHelp::pageList(const char* name, const QString& accessibleName) {
    auto* list = new QListWidget(this);
    list->setObjectName(QLatin1String(name));
    list->setAccessibleName(accessibleName);
    list->setSpacing(1);
    const auto open = [this](const QListWidgetItem* item) { showPage(item->data(addressRole).toString()); };
    connect(list, &QListWidget::itemClicked, this, open);
    connect(list, &QListWidget::itemActivated, this, open);
    return list;
}

QWidget* frmHelp::contentsTab() {
    m_contents = pageList("lstContents", tr("Contents"));
    for (const ManualPage& page : m_manual.pages())
        addItem(*m_contents, QString::fromStdString(page.title), page.file);
    return m_contents;
}

/// A line to type in above a list; the key Down goes on to the list.
QLineEdit* frmHelp::addEntry(QWidget& tab, const char* name, const QString& hint, QListWidget* below) {
    auto* entry = new QLineEdit(&tab);
    entry->setObjectName(QLatin1String(name));
    entry->setPlaceholderText(hint);
    entry->setAccessibleName(hint);
    entry->setClearButtonEnabled(true);
    auto* layout = new QVBoxLayout(&tab);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(entry);
    layout->addWidget(below, 1);
    const auto toList = [below] {
        below->setFocus();
        if (below->currentRow() < 0) below->setCurrentRow(0);
    };
    auto* down = new QShortcut(Qt::Key_Down, entry);
    down->setContext(Qt::WidgetShortcut);
    connect(down, &QShortcut::activated, below, toList);
    return entry;
}

QWidget* frmHelp::indexTab() {
    auto* tab = new QWidget(this);
    m_index = pageList("lstIndex", tr("Index"));
    for (const IndexLine& line : m_manual.index())
        addItem(*m_index, QString::fromStdString(line.keyword), line.page->file);
    QLineEdit* entry = addEntry(*tab, "txtIndex", tr("Keyword"), m_index);
    connect(entry, &QLineEdit::textChanged, this, &frmHelp::filterIndex);
    connect(entry, &QLineEdit::returnPressed, this, [this] {
        for (int row = 0; row < m_index->count(); ++row)
            if (!m_index->item(row)->isHidden())
                return (void)showPage(m_index->item(row)->data(addressRole).toString());
    });
    return tab;
}

QWidget* frmHelp::searchTab() {
    auto* tab = new QWidget(this);
    m_hits = pageList("lstHits", tr("Pages found"));
    m_hits->setWordWrap(true);
    m_hits->setAlternatingRowColors(true);
    m_query = addEntry(*tab, "txtSearch", tr("Words to search for"), m_hits);
    connect(m_query, &QLineEdit::textChanged, this, &frmHelp::search);
    connect(m_query, &QLineEdit::returnPressed, this, [this] {
        if (m_hits->count() > 0) showPage(m_hits->item(0)->data(addressRole).toString());
    });
    return tab;
}

void frmHelp::filterIndex(const QString& typed) {
    for (int row = 0; row < m_index->count(); ++row) {
        QListWidgetItem* item = m_index->item(row);
        item->setHidden(!item->text().contains(typed, Qt::CaseInsensitive));
    }
}

void frmHelp::search(const QString& query) {
    m_hits->clear();
    for (const ManualHit& hit : m_manual.search(query.toStdString()))
        addItem(*m_hits,
                QString::fromStdString(hit.page->title) + QLatin1Char('\n') + QString::fromStdString(hit.excerpt),
                hit.page->file);
    if (m_hits->count() > 0 || query.trimmed().isEmpty()) return;
    auto* nothing = new QListWidgetItem(tr("No page holds all of these words."), m_hits);
    nothing->setFlags(Qt::NoItemFlags);
}

void frmHelp::showContents() {
    m_sides->setCurrentWidget(m_contents);
    showPage(QString::fromStdString(m_manual.pages().front().file));
    m_contents->setFocus();
}

void frmHelp::showSearch() {
    m_sides->setCurrentIndex(searchSide);
    if (m_page->source().isEmpty()) showPage(QString::fromStdString(m_manual.pages().front().file));
    m_query->setFocus();
    m_query->selectAll();
}

bool frmHelp::showPage(const QString& address) {
    if (address.isEmpty()) return true; // the line that says that nothing was found
    const QString folder = QString::fromStdString(pathText(m_manual.folder()));
    QUrl url = QUrl::fromLocalFile(folder + QLatin1Char('/') + address.section(QLatin1Char('#'), 0, 0));
    if (!QFile::exists(url.toLocalFile())) return false;
    if (const QString anchor = address.section(QLatin1Char('#'), 1); !anchor.isEmpty()) url.setFragment(anchor);
    m_page->setSource(url);
    return true;
}

/// The list of contents marks the page that is shown; a page found by the search shows the words.
void frmHelp::followPage(const QUrl& page) {
    const QString file = page.fileName();
    for (int row = 0; row < m_contents->count(); ++row)
        if (m_contents->item(row)->data(addressRole).toString() == file) m_contents->setCurrentRow(row);
    const bool searched = m_sides->currentIndex() == searchSide;
    m_page->markWords(searched ? m_query->text().split(QLatin1Char(' '), Qt::SkipEmptyParts) : QStringList());
}

} // namespace tavex2
