#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace tavex2 {

class CWNumEdit;

/// The numeric boxes of a dialog together: passes on what they tell, each under its own name, and keeps OK from closing
/// the dialog over a text that is not taken. Made by the dialog when its boxes are there. User-interface thread.
class NumberBoxes final : public QObject {
    Q_OBJECT

  public:
    explicit NumberBoxes(QWidget& dialog);

    /// Puts the focus on the box whose text is not taken. False when there is none, so that OK may go on.
    bool askForCorrection();

  Q_SIGNALS:
    /// What is to be said about a box, or nothing any more.
    void told(const QString& text);

  private:
    QWidget& m_dialog;
};

} // namespace tavex2
