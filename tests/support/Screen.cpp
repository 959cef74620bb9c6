#include "support/Screen.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStatusBar>
#include <QTest>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <QWindow>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>

namespace tavex2::test {

namespace {

/// A text without its marks of access keys; "&&" is an ampersand that is shown.
QString withoutMarks(const QString& text) {
    QString shown;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('&') && i + 1 < text.size()) ++i;
        shown += text[i];
    }
    return shown;
}

/// The control that is drawn last at a point of `parent`.
QWidget* topmostAt(QWidget& parent, QPoint point) {
    const QObjectList& children = parent.children();
    for (auto each = children.rbegin(); each != children.rend(); ++each) {
        auto* child = qobject_cast<QWidget*>(*each);
        if (child == nullptr || child->isWindow() || !child->isVisible() || !child->geometry().contains(point))
            continue;
        const QPoint inside = point - child->pos();
        if (!child->mask().isEmpty() && !child->mask().contains(inside)) continue;
        return topmostAt(*child, inside);
    }
    return &parent;
}

bool belongsTo(const QWidget* widget, const QWidget& control) {
    return widget == &control || (widget != nullptr && control.isAncestorOf(widget));
}

/// Why a user does not see all of a control; empty when he does. Middle and corners stand for the whole.
std::string hiddenBecause(QWidget& window, QWidget& control) {
    const QWindow* shown = window.windowHandle();
    if (shown == nullptr || !shown->isExposed()) return "its window is not on the screen";
    if (!control.isVisibleTo(&window)) return "it is hidden";
    if (control.width() < 1 || control.height() < 1) return "it has no extent";
    const QRect area = control.rect();
    for (const QPoint& each : {area.center(), area.topLeft(), area.topRight(), area.bottomLeft(), area.bottomRight()}) {
        const QPoint point = control.mapTo(&window, each);
        if (!window.rect().contains(point)) return "it reaches beyond its window";
        const QWidget* seen = topmostAt(window, point);
        if (belongsTo(seen, control)) continue;
        if (seen->isAncestorOf(&control)) return "it is cut off";
        return "it is covered by " + seen->objectName().toStdString() + " (" + seen->metaObject()->className() + ")";
    }
    return {};
}

/// The lines of a longer text that are scrolled into view.
template <class Edit>
QString linesInView(const Edit& edit) {
    QTextCursor lines = edit.cursorForPosition(QPoint(0, 0));
    lines.setPosition(edit.cursorForPosition(edit.viewport()->rect().bottomRight()).position(),
                      QTextCursor::KeepAnchor);
    return lines.selection().toPlainText();
}

/// What a control shows; no value for a kind that shows no text.
std::optional<QString> shownText(const QWidget& control) {
    if (const auto* label = qobject_cast<const QLabel*>(&control)) {
        const bool rich = label->textFormat() == Qt::RichText ||
                          (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text()));
        if (rich) return QTextDocumentFragment::fromHtml(label->text()).toPlainText();
        return label->buddy() != nullptr ? withoutMarks(label->text()) : label->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) return withoutMarks(button->text());
    if (const auto* edit = qobject_cast<const QLineEdit*>(&control)) return edit->displayText();
    if (const auto* box = qobject_cast<const QAbstractSpinBox*>(&control)) return box->text();
    if (const auto* choice = qobject_cast<const QComboBox*>(&control)) return choice->currentText();
    if (const auto* group = qobject_cast<const QGroupBox*>(&control)) return withoutMarks(group->title());
    if (const auto* bar = qobject_cast<const QProgressBar*>(&control)) return bar->text();
    if (const auto* text = qobject_cast<const QTextEdit*>(&control)) return linesInView(*text);
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(&control)) return linesInView(*text);
    return std::nullopt;
}

/// How an item reads in its menu: without marks, and without the key beside it.
std::string itemText(const QAction& action) {
    return withoutMarks(action.text().section(QLatin1Char('\t'), 0, 0)).toStdString();
}

void clickAt(const QWidget& inWindow, QPoint point, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseMove(inWindow.windowHandle(), point);
    QTest::mouseClick(inWindow.windowHandle(), button, modifiers, point);
}

void closeMenus() {
    while (QWidget* open = QApplication::activePopupWidget())
        open->close();
}

QAction* itemOf(const QWidget& menu, const char* text) {
    for (QAction* each : menu.actions())
        if (each->isVisible() && !each->isSeparator() && itemText(*each) == text) return each;
    return nullptr;
}

/// Opens the menus that lead to the last item of a path and calls `act` with that item and its menu; the menus are
/// closed afterwards.
void inMenu(QWidget& window, std::initializer_list<const char*> path,
            const std::function<void(QMenu& menu, QAction& item)>& act) {
    auto* main = qobject_cast<QMainWindow*>(&window);
    if (main == nullptr || path.size() < 2) {
        ADD_FAILURE() << "a path leads from a menu of a main window to an item";
        return;
    }
    QMenuBar* bar = main->menuBar();
    QWidget* open = bar;
    std::string sofar;
    for (const char* step : path) {
        QAction* item = itemOf(*open, step);
        if (item == nullptr) {
            ADD_FAILURE() << "no \"" << step << "\" " << (sofar.empty() ? "in the menu bar" : "in " + sofar);
            break;
        }
        sofar += (sofar.empty() ? "" : " > ") + std::string(step);
        if (step == *std::prev(path.end())) {
            act(*qobject_cast<QMenu*>(open), *item);
            break;
        }
        QPoint middle;
        if (open == bar)
            middle = bar->mapTo(&window, bar->actionGeometry(item).center());
        else
            middle = qobject_cast<QMenu*>(open)->actionGeometry(item).center();
        clickAt(*open->window(), middle, Qt::LeftButton);
        if (!item->isEnabled() || item->menu() == nullptr ||
            !QTest::qWaitFor([&] { return QApplication::activePopupWidget() == item->menu(); })) {
            ADD_FAILURE() << sofar << " does not open";
            break;
        }
        open = item->menu();
        if (!QTest::qWaitForWindowExposed(open)) ADD_FAILURE() << sofar << " does not come to the screen";
    }
    closeMenus();
}

/// The window that keys go to, if there is one on the screen.
QWindow* windowWithKeys() {
    QWindow* window = QGuiApplication::focusWindow();
    if (window != nullptr && window->isVisible()) return window;
    ADD_FAILURE() << "no window has the keys";
    return nullptr;
}

} // namespace

/// The control of that name that is not hidden, or the reason why there is none to be seen.
QWidget* Screen::control(const char* name, std::string& problem) const {
    QWidget* found = nullptr;
    problem = "there is no such control in this window";
    for (QWidget* each : m_window.findChildren<QWidget*>(QLatin1String(name))) {
        if (each->window() != &m_window) continue;
        const std::string reason = hiddenBecause(m_window, *each);
        if (reason.empty() && found != nullptr) {
            problem = "there are two of that name";
            return nullptr;
        }
        if (reason.empty()) found = each;
        problem = reason;
    }
    if (found != nullptr) problem.clear();
    return found;
}

bool Screen::shows(const char* name) const {
    std::string problem;
    return control(name, problem) != nullptr;
}

std::string Screen::text(const char* name) const {
    std::string problem;
    const QWidget* found = control(name, problem);
    if (found == nullptr) {
        ADD_FAILURE() << name << " cannot be read: " << problem;
        return {};
    }
    const std::optional<QString> shown = shownText(*found);
    if (!shown) ADD_FAILURE() << name << " is a " << found->metaObject()->className() << ", which shows no text";
    return shown.value_or(QString()).toStdString();
}

std::string Screen::title() const {
    if (!m_window.isVisible()) ADD_FAILURE() << m_window.objectName().toStdString() << " is not open";
    return m_window.windowTitle().toStdString();
}

std::string Screen::statusText() const {
    auto* main = qobject_cast<QMainWindow*>(&m_window);
    QStatusBar* bar = main != nullptr ? main->statusBar() : nullptr;
    if (bar == nullptr || !hiddenBecause(m_window, *bar).empty()) {
        ADD_FAILURE() << "no status bar is shown";
        return {};
    }
    // A message takes the place of the panels that are not permanent, up to the first one that is still shown.
    const QLabel* first = nullptr;
    for (const QLabel* each : bar->findChildren<QLabel*>())
        if (each->isVisible() && !each->text().isEmpty() && (first == nullptr || each->x() < first->x())) first = each;
    int room = bar->width();
    for (const QWidget* each : bar->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (each->isVisible() && each->width() > 0) room = std::min(room, each->x());
    if (!bar->currentMessage().isEmpty() && room > 2 * bar->fontMetrics().averageCharWidth())
        return bar->currentMessage().toStdString();
    return first != nullptr ? shownText(*first)->toStdString() : std::string();
}

/// The control, if a click could do something there.
QWidget* Screen::usable(const char* name) const {
    std::string problem;
    QWidget* found = control(name, problem);
    if (found != nullptr && !found->isEnabled()) problem = "it is disabled";
    if (problem.empty()) return found;
    ADD_FAILURE() << name << " cannot be clicked: " << problem;
    return nullptr;
}

void Screen::click(const char* name, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) const {
    if (const QWidget* target = usable(name))
        clickAt(m_window, target->mapTo(&m_window, target->rect().center()), button, modifiers);
}

void Screen::pointAt(const char* name) const {
    std::string problem;
    const QWidget* target = control(name, problem);
    if (target == nullptr) {
        ADD_FAILURE() << name << " cannot be pointed at: " << problem;
        return;
    }
    QTest::mouseMove(m_window.windowHandle(), target->mapTo(&m_window, target->rect().center()));
    QApplication::processEvents();
}

void Screen::choose(std::initializer_list<const char*> path) const {
    inMenu(m_window, path, [](QMenu& menu, QAction& item) {
        if (!item.isEnabled()) {
            ADD_FAILURE() << itemText(item) << " cannot be chosen: it is disabled";
            return;
        }
        clickAt(menu, menu.actionGeometry(&item).center(), Qt::LeftButton);
    });
}

bool Screen::isChecked(std::initializer_list<const char*> path) const {
    bool checked = false;
    inMenu(m_window, path, [&](QMenu&, const QAction& item) { checked = item.isCheckable() && item.isChecked(); });
    return checked;
}

bool Screen::isOffered(std::initializer_list<const char*> path) const {
    bool offered = false;
    inMenu(m_window, path, [&](QMenu&, const QAction& item) { offered = item.isEnabled(); });
    return offered;
}

void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    if (QWindow* window = windowWithKeys()) QTest::keyClick(window, key, modifiers);
}

void typeText(const QString& text) {
    for (const QChar each : text)
        if (QWindow* window = windowWithKeys())
            QTest::sendKeyEvent(QTest::Click, window, Qt::Key_unknown, QString(each), Qt::NoModifier);
}

} // namespace tavex2::test
