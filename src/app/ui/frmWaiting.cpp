#include "app/ui/frmWaiting.h"

#include "ui_frmWaiting.h"

namespace tavex2 {

frmWaiting::frmWaiting(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      m_ui(std::make_unique<Ui::frmWaiting>()) {
    m_ui->setupUi(this);
    setModal(false);
    setAttribute(Qt::WA_ShowWithoutActivating);
}

frmWaiting::~frmWaiting() = default;

void frmWaiting::reject() {
    Q_EMIT stopRequested();
}

} // namespace tavex2
