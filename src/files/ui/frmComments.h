#pragma once

#include "files/CommentsEditor.h"

#include <QDialog>

class QTableWidget;

namespace tavex2 {

/// The modal form for the comments of the current trial. A click on a line, or Enter, opens the box to edit it.
/// User-interface thread.
class frmComments final : public QDialog {
    Q_OBJECT

  public:
    frmComments(TrialComments& comments, int trialNumber, QWidget* mainWindow);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void addGrid();
    void addButtons();
    void edit(int row);
    void showLines();

    CommentsEditor m_editor;
    int m_trialNumber;
    QTableWidget* m_grid = nullptr;
};

} // namespace tavex2
