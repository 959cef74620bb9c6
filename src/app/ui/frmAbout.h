#pragma once

#include <QDialog>

#include <functional>
#include <string>

namespace tavex2 {

/// The About box. Its second button shows what a bug report needs to know.
class frmAbout final : public QDialog {
    Q_OBJECT

  public:
    /// `information` gives the text about program and machine.
    frmAbout(const std::function<std::string()>& information, QWidget* mainWindow);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void StartSysInfo(const std::string& information);
};

} // namespace tavex2
