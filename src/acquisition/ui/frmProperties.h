#pragma once

#include "acquisition/SetupDialog.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <vector>

namespace Ui {
class frmProperties;
}

class QAbstractButton;
class QCheckBox;
class QLineEdit;
class QRadioButton;

namespace tavex2 {

class CWNumEdit;
class NumberBoxes;

/// The modal setup dialog: shows what SetupDialog holds, tells it what the user does, and says in one line what the
/// settings come to. User-interface thread.
class frmProperties final : public QDialog {
    Q_OBJECT

  public:
    frmProperties(ProgramState& state, SetupServices services, QWidget* mainWindow);
    ~frmProperties() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void reject() override;

  private:
    /// How a number box looks and what may be entered.
    struct NumberBox {
        const char* format;
        double lowest;
        double highest;
        bool whole = false;
    };

    void bindSampling();
    void bindTrigger();
    void bindStimulus();
    void bindSound();
    void bindOptions();
    void bindFile();
    void bindFolder();
    void bindDevice();

    void bind(CWNumEdit* box, double& value, const char* field, const char* format, bool whole = false);
    void bind(CWNumEdit* box, double& value, const NumberBox& looks);
    void bind(QLineEdit* box, std::string& value);
    void bind(QCheckBox* box, bool& value);
    void bind(std::vector<QRadioButton*> options, int& value);
    void whenClicked(QAbstractButton* button, std::function<void(bool ticked)> handler);

    void tell(const QString& text);
    void showState();
    void showMeaning();
    void cmdOK_Click();

    std::unique_ptr<Ui::frmProperties> m_ui;
    SetupDialog m_dialog;
    NumberBoxes* m_boxes;
    QString m_told; ///< about an entry that was not taken
};

} // namespace tavex2
