#include "display/ui/frmScale.h"

#include "platform/qt/CenterForm.h"
#include "platform/qt/NumberBoxes.h"
#include "ui_frmScale.h"

#include <QWhatsThis>

namespace tavex2 {

frmScale::frmScale(AcqSettings& settings, const GraphControls& graphs, ZoomCommands& zoom, QWidget* mainWindow)
    : QDialog(mainWindow), m_ui(std::make_unique<Ui::frmScale>()), m_dialog(settings, graphs, zoom) {
    m_ui->setupUi(this);
    m_optTime = {m_ui->optTime_0, m_ui->optTime_1};
    m_optVolts = {m_ui->optVolts_0, m_ui->optVolts_1};
    m_optScale = {m_ui->optScale_0, m_ui->optScale_1, m_ui->optScale_2, m_ui->optScale_3, m_ui->optScale_4};
    constexpr int lines = 2; // of what is told about a box, so that the dialog does not jump
    m_ui->lblError->setMinimumHeight(fontMetrics().lineSpacing() * lines);
    m_boxes = new NumberBoxes(*this);
    m_dialog.Form_Load();
    showControls();
    connectControls();
}

frmScale::~frmScale() = default;

void frmScale::connectControls() {
    // A handler of the logic: runs when the user, and not showControls(), changed the control.
    const auto user = [this](auto&& handler) {
        return [this, handler](auto... values) {
            if (m_showing) return;
            handler(values...);
            showControls();
        };
    };
    const auto connectOptions = [&](auto& options, void (ScaleDialog::*click)(int)) {
        for (std::size_t index = 0; index < options.size(); ++index)
            connect(options[index], &QRadioButton::toggled, this, user([this, click, index](bool selected) {
                        if (selected) (m_dialog.*click)(static_cast<int>(index));
                    }));
    };
    connectOptions(m_optTime, &ScaleDialog::optTime_Click);
    connectOptions(m_optVolts, &ScaleDialog::optVolts_Click);
    connectOptions(m_optScale, &ScaleDialog::optScale_Click);
    connect(m_ui->chkAutoScale, &QCheckBox::toggled, this,
            user([this](bool ticked) { m_dialog.chkAutoScale_Click(ticked); }));

    const auto connectBox = [&](CWNumEdit* box, void (ScaleDialog::*enter)(double)) {
        connect(box, &CWNumEdit::valueChanged, this, [this, enter](double value) {
            if (!m_showing) (m_dialog.*enter)(value);
        });
    };
    connectBox(m_ui->cwnUpper, &ScaleDialog::enterUpper);
    connectBox(m_ui->cwnLower, &ScaleDialog::enterLower);
    connectBox(m_ui->cwnLeft, &ScaleDialog::enterLeft);
    connectBox(m_ui->cwnRight, &ScaleDialog::enterRight);

    connect(m_boxes, &NumberBoxes::told, m_ui->lblError, &QLabel::setText);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmScale::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmScale::reject);
    connect(m_ui->cmdWhatsThis, &QToolButton::clicked, this, [] { QWhatsThis::enterWhatsThisMode(); });
}

void frmScale::showControls() {
    m_showing = true;
    const ScaleControls& shown = m_dialog.controls();
    const auto select = [](auto& options, int index) {
        if (index >= 0 && index < static_cast<int>(options.size()))
            options[static_cast<std::size_t>(index)]->setChecked(true);
    };
    select(m_optTime, shown.optTime);
    select(m_optVolts, shown.optVolts);
    select(m_optScale, shown.optScale);
    m_ui->chkAutoScale->setChecked(shown.chkAutoScale);
    m_ui->fraScaleType->setEnabled(shown.fraScaleTypeEnabled);

    const auto showBox = [&](CWNumEdit* box, double value, const std::string& format) {
        box->setFormat(QString::fromStdString(format));
        box->setValue(value);
        box->setEnabled(shown.boxesEnabled);
    };
    showBox(m_ui->cwnUpper, shown.cwnUpper, shown.voltageFormat);
    showBox(m_ui->cwnLower, shown.cwnLower, shown.voltageFormat);
    showBox(m_ui->cwnLeft, shown.cwnLeft, shown.leftFormat);
    showBox(m_ui->cwnRight, shown.cwnRight, shown.rightFormat);
    m_showing = false;
}

void frmScale::cmdOK_Click() {
    if (m_boxes->askForCorrection()) return;
    const Result<void> applied = m_dialog.cmdOK_Click();
    if (applied) {
        accept();
        return;
    }
    m_ui->lblError->setText(QString::fromStdString(applied.error().text));
    showControls();
}

void frmScale::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    CenterForm(this, parentWidget()->window());
}

} // namespace tavex2
