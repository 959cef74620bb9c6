#pragma once

#include <QDialog>

#include <functional>
#include <string>

namespace tavex2 {

/// What the About box tells beyond the version.
struct AboutServices {
    std::function<bool()> StartSysInfo; ///< starts the system's own viewer; False on a system that has no such call
    std::function<std::string()> information; ///< shown then: what a bug report needs to know about program and machine
};

/// The About box. Its second button is for system information.
class frmAbout final : public QDialog {
    Q_OBJECT

  public:
    frmAbout(const AboutServices& services, QWidget* mainWindow);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void showInformation(const std::string& information);
};

} // namespace tavex2
