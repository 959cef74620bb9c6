#pragma once

#include <QString>
#include <QWidget>

#include <initializer_list>
#include <string>

namespace tavex2::test {

/// A window as its user has it: read with the eyes, worked with pointer and keys. Whatever a user could not do fails
/// the test with a sentence: to read a control that is hidden, covered, cut off or without extent; to click what is
/// covered or disabled; to choose from a menu what it does not offer. Controls go by their object names, menus and
/// their items by the texts that they show. Other windows do not cover this one, because the desktop decides which lies
/// above.
///
/// A click or a choice that opens a modal dialog returns when the dialog is closed; WhenDialogOpens works in it.
class Screen {
  public:
    explicit Screen(QWidget& window) : m_window(*window.window()) {}

    /// Whether a user sees all of the control; fails nothing.
    bool shows(const char* name) const;

    /// What the control shows: a label, a button, a box for text or numbers, a list's choice, a progress bar, or the
    /// part of a longer text that is scrolled into view, its lines separated by line breaks. Without the marks of
    /// access keys.
    std::string text(const char* name) const;

    /// The title in the window's frame.
    std::string title() const;

    /// What the status bar says at its left end. While the pointer or a menu's mark is on a command, that is the
    /// command's tip, if the bar has room for it; empty when there is nothing to read.
    std::string statusText() const;

    /// Moves the pointer to the middle of the control and clicks.
    void click(const char* name, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {}) const;

    /// Moves the pointer over the middle of the control and leaves it there.
    void pointAt(const char* name) const;

    /// Opens a menu of the menu bar with the pointer and clicks through its items: choose({"View", "Graphs",
    /// "Scale..."}).
    void choose(std::initializer_list<const char*> path) const;

    /// Whether the last item of such a path has a check mark, or could be chosen; the menu is opened for that and
    /// closed.
    bool isChecked(std::initializer_list<const char*> path) const;
    bool isOffered(std::initializer_list<const char*> path) const;

  private:
    QWidget* control(const char* name, std::string& problem) const;
    QWidget* usable(const char* name) const;

    QWidget& m_window;
};

/// Presses and releases a key in whatever window and control has the keys.
void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {});

/// Types a text, key by key, into whatever has the keys.
void typeText(const QString& text);

} // namespace tavex2::test
