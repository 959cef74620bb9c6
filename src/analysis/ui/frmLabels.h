#pragma once

#include "analysis/ChannelLabels.h"

#include <QDialog>

class QFormLayout;
class QLineEdit;
class QListWidget;

namespace tavex2 {

/// The modal form for the labels and units of the channels: three lists side by side; a click on a label or unit, or
/// Enter, opens the box to edit it. User-interface thread.
class frmLabels final : public QDialog {
    Q_OBJECT

  public:
    frmLabels(ProgramState& state, QWidget* mainWindow);

  protected:
    void showEvent(QShowEvent* event) override;
    void reject() override;

  private:
    QLineEdit* addFact(QFormLayout& form, const char* name, const QString& caption, const QString& tip);
    QListWidget* makeList(const char* name, const QString& tip);
    void addLists();
    void addButtons();
    void whenChosen(QListWidget* list, void (frmLabels::*edit)(int));
    void editLabel(int channel);
    void editUnit(int channel);
    void showFacts();
    void RewriteValues();

    ChannelLabels m_labels;
    QLineEdit* m_title = nullptr;
    QLineEdit* m_rate = nullptr;
    QLineEdit* m_duration = nullptr;
    QListWidget* m_nums = nullptr;
    QListWidget* m_names = nullptr;
    QListWidget* m_units = nullptr;
};

} // namespace tavex2
