#pragma once

#include "analysis/ChannelLabels.h"

#include <QDialog>

class QAbstractButton;
class QButtonGroup;
class QFormLayout;
class QLineEdit;
class QListWidget;

namespace tavex2 {

/// The modal form for the labels and units of the channels: three lists side by side; a click on a label or unit, or
/// Enter, opens the box to edit it. Option buttons choose the channel that Enter edits, check boxes those that the
/// preview shows as the legend will name them. User-interface thread.
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
    void prepareBox(QAbstractButton& box, const char* array, int index, const QString& tip) const;
    void addOptions();
    void addChoices();
    void workOn(int channel);
    void showPreview();
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
    QListWidget* m_preview = nullptr;
    QButtonGroup* m_options = nullptr;
};

} // namespace tavex2
