#pragma once

#include "help/HelpViewer.h"

#include <QObject>

#include <memory>

class QWindow;

namespace tavex2 {

class frmHelp;

/// Opens the help window, one for the whole program, made when it is first wanted. It can be read while a dialog waits
/// for an answer. User-interface thread.
class HelpWindow final : public QObject, public HelpViewer {
    Q_OBJECT

  public:
    HelpWindow();
    ~HelpWindow() override;

    Result<void> showContents(const Manual& manual) override;
    Result<void> showSearch(const Manual& manual) override;
    Result<void> showPage(const Manual& manual, const std::string& address) override;

  private:
    frmHelp& window(const Manual& manual);
    void raise();
    void stayUsableBeside(QWindow* focused);

    std::unique_ptr<frmHelp> m_window;
};

} // namespace tavex2
