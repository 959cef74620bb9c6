#pragma once

#include "display/ScaleDialog.h"

#include <QDialog>

#include <array>
#include <memory>

class QRadioButton;

namespace Ui {
class frmScale;
}

namespace tavex2 {

class NumberBoxes;

/// The modal scale dialog: shows what ScaleDialog works out and tells it what the user does. User-interface thread.
class frmScale final : public QDialog {
    Q_OBJECT

  public:
    frmScale(AcqSettings& settings, const GraphControls& graphs, ZoomCommands& zoom, QWidget* mainWindow);
    ~frmScale() override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void connectControls();
    void showControls();
    void cmdOK_Click();

    std::unique_ptr<Ui::frmScale> m_ui;
    std::array<QRadioButton*, 2> m_optTime;
    std::array<QRadioButton*, 2> m_optVolts;
    std::array<QRadioButton*, 5> m_optScale;
    ScaleDialog m_dialog;
    NumberBoxes* m_boxes;
    bool m_showing = false; ///< controls change because they are shown anew, not because the user changes them
};

} // namespace tavex2
