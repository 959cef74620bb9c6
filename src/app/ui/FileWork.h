#pragma once

#include <QElapsedTimer>
#include <QObject>

class QProgressBar;
class QPushButton;

namespace tavex2 {

/// Long work on a file as the status bar shows it: how far it is, and a Cancel button. Between two steps the window
/// repaints and answers, but takes no input besides Cancel and Escape, so that nothing changes what is worked on.
/// User-interface thread.
class FileWork final : public QObject {
    Q_OBJECT

  public:
    FileWork(QProgressBar& bar, QPushButton& cancel, QObject* parent);

    /// One step of `of` is done; the first one begins the work. False when the user wants it to end.
    bool step(int done, int of);
    /// The work is over; without effect when none is going on.
    void end();
    bool active() const { return m_active; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QProgressBar& m_bar;
    QPushButton& m_cancel;
    QElapsedTimer m_since;
    bool m_active = false;
    bool m_cancelled = false;
};

} // namespace tavex2
