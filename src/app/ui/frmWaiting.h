#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmWaiting;
}

namespace tavex2 {

/// The small modeless window that stands over the main window while a triggered collection waits. It asks nothing and
/// keeps the focus where it was, so that the keys of the main window go on working.
class frmWaiting final : public QDialog {
    Q_OBJECT

  public:
    explicit frmWaiting(QWidget* parent);
    ~frmWaiting() override;

  Q_SIGNALS:
    /// Escape was pressed, or the window's close box.
    void stopRequested();

  protected:
    void reject() override;

  private:
    std::unique_ptr<Ui::frmWaiting> m_ui;
};

} // namespace tavex2
