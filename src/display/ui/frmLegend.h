#pragma once

#include "acquisition/records/LmbHeader.h"

#include <QDialog>

namespace tavex2 {

/// The modeless window that tells which colour belongs to which channel. It takes no focus when it is shown, so that
/// the keys of the main window go on working.
class frmLegend final : public QDialog {
    Q_OBJECT

  public:
    explicit frmLegend(QWidget* mainWindow);

    /// Tells labels and units in the tool tips.
    void showNames(const LmbHeader& header);

  Q_SIGNALS:
    /// The user closed the window by its close box or by Escape.
    void Form_Unload();

  protected:
    void showEvent(QShowEvent* event) override;
    void reject() override;

  private:
    bool m_placed = false;
};

} // namespace tavex2
