#pragma once

#include <QObject>

class QWidget;

namespace tavex2 {

class HelpCommands;

/// F1 anywhere in the program opens the page about what has the focus, in dialogs too; and every dialog's controls get
/// their texts for "What's this?" when it opens. User-interface thread.
class HelpKeys final : public QObject {
    Q_OBJECT

  public:
    /// Listens to the application's events while it lives.
    explicit HelpKeys(HelpCommands& commands);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void help();
    void describeControls(QWidget& window);

    HelpCommands& m_commands;
};

} // namespace tavex2
