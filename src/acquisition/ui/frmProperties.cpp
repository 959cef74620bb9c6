#include "acquisition/ui/frmProperties.h"

#include "acquisition/AcqFields.h"
#include "base/PathText.h"
#include "platform/qt/CenterForm.h"
#include "platform/qt/NumberBoxes.h"
#include "platform/qt/QtFileDialogs.h"
#include "ui_frmProperties.h"

#include <QWhatsThis>

#include <array>
#include <utility>

namespace tavex2 {

frmProperties::frmProperties(ProgramState& state, SetupServices services, QWidget* mainWindow)
    : QDialog(mainWindow), m_ui(std::make_unique<Ui::frmProperties>()), m_dialog(state, std::move(services)) {
    m_ui->setupUi(this);
    m_boxes = new NumberBoxes(*this);
    connect(m_boxes, &NumberBoxes::told, this, &frmProperties::tell);
    constexpr int lines = 5; // of the longest usual text, so that the dialog does not jump
    m_ui->lblMeaning->setMinimumHeight(fontMetrics().lineSpacing() * lines);
    m_ui->lblMeaning->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_dialog.Form_Load();
    bindSampling();
    bindTrigger();
    bindStimulus();
    bindSound();
    bindOptions();
    bindFile();
    bindDevice();
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmProperties::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmProperties::reject);
    connect(m_ui->cmdWhatsThis, &QToolButton::clicked, this, [] { QWhatsThis::enterWhatsThisMode(); });
    showState();
}

frmProperties::~frmProperties() = default;

// Binding: a control shows its value first and is connected then, so that loading changes nothing
// ----------------------

void frmProperties::bind(CWNumEdit* box, double& value, const char* field, const char* format, bool whole) {
    const FieldRange range = rangeOf(field);
    bind(box, value, {.format = format, .lowest = range.lowest, .highest = range.highest, .whole = whole});
}

void frmProperties::bind(CWNumEdit* box, double& value, const NumberBox& looks) {
    box->setFormat(QString::fromUtf8(looks.format));
    box->setRange(looks.lowest, looks.highest);
    box->setWhole(looks.whole);
    box->setValue(value);
    connect(box, &CWNumEdit::valueChanged, this, [this, &value](double entered) {
        value = entered;
        showState();
    });
}

void frmProperties::bind(QLineEdit* box, std::string& value) {
    box->setText(QString::fromStdString(value));
    connect(box, &QLineEdit::textChanged, this, [this, box, &value](const QString& entered) {
        value = entered.toStdString();
        if (entered.size() < box->maxLength()) m_told.clear();
        showState();
    });
}

void frmProperties::bind(QCheckBox* box, bool& value) {
    box->setChecked(value);
    whenClicked(box, [&value](bool ticked) { value = ticked; });
}

void frmProperties::bind(std::vector<QRadioButton*> options, int& value) {
    for (std::size_t index = 0; index < options.size(); ++index) {
        options[index]->setChecked(static_cast<int>(index) == value);
        whenClicked(options[index], [&value, index](bool selected) {
            if (selected) value = static_cast<int>(index);
        });
    }
}

void frmProperties::whenClicked(QAbstractButton* button, std::function<void(bool ticked)> handler) {
    connect(button, &QAbstractButton::toggled, this, [this, handler = std::move(handler)](bool ticked) {
        handler(ticked);
        showState();
    });
}

void frmProperties::bindSampling() {
    SetupControls& c = m_dialog.controls();
    constexpr int longestList = 50;
    m_ui->txtChannels->setMaxLength(longestList);
    bind(m_ui->txtChannels, c.txtChannels);
    connect(m_ui->txtChannels, &QLineEdit::inputRejected, this, [this] {
        tell(tr("Channels: the list holds %1 characters, and no more was taken. Shorten it, for example with ranges "
                "such "
                "as 0:7.")
                 .arg(longestList));
    });
    bind(m_ui->cwnRate, c.cwnRate, "Rate", "0.\" Hz\"", true);
    bind(m_ui->cwnDuration, c.cwnDuration, "Duration", ".### \"s\"");
    bind(m_ui->cwnUpper, c.cwnUpper, "UpperVolts", "0.0\" V\"");
    bind(m_ui->cwnLower, c.cwnLower, "LowerVolts", "0.0\" V\"");
    bind(m_ui->cwnRepeat, c.cwnRepeat, "Repeat", "0.\" x\"", true);
    bind(m_ui->cwnStartDelay, c.cwnStartDelay, "StartDelay", "##. \"s\"", true);

    const std::array options{m_ui->optTrigger_0, m_ui->optTrigger_1};
    for (std::size_t index = 0; index < options.size(); ++index) {
        options[index]->setChecked(static_cast<int>(index) == c.optTrigger);
        whenClicked(options[index], [this, index](bool selected) {
            if (selected) m_dialog.optTrigger_Click(static_cast<int>(index));
        });
    }
}

void frmProperties::bindTrigger() {
    SetupControls& c = m_dialog.controls();
    bind(m_ui->CWNumTriggerChannel, c.CWNumTriggerChannel, "TriggerChannel", "00.", true);
    bind(m_ui->CWNumTriggerLevel, c.CWNumTriggerLevel, "TriggerLevel", "0.0\" V\"");
    bind(m_ui->CWNumPretrigger, c.CWNumPretrigger, "Pretrigger", "0.\" %\"", true);
    bind({m_ui->optTriggerSlope_0, m_ui->optTriggerSlope_1}, c.optTriggerSlope);
}

void frmProperties::bindStimulus() {
    SetupControls& c = m_dialog.controls();
    const std::array lines{m_ui->cbDIO_0, m_ui->cbDIO_1, m_ui->cbDIO_2};
    const std::array delays{m_ui->cwnLatency_0, m_ui->cwnLatency_1, m_ui->cwnLatency_2};
    for (std::size_t line = 0; line < lines.size(); ++line) {
        bind(lines[line], c.cbDIO[line]);
        bind(delays[line], c.cwnLatency[line], {.format = "0.\" ms\"", .lowest = 0, .highest = 120000, .whole = true});
    }
}

void frmProperties::bindSound() {
    SetupControls& c = m_dialog.controls();
    const std::array boxes{m_ui->cbSound_0, m_ui->cbSound_1};
    for (std::size_t index = 0; index < boxes.size(); ++index) {
        boxes[index]->setChecked(c.cbSound[index]);
        whenClicked(boxes[index],
                    [this, index](bool ticked) { m_dialog.cbSound_Click(static_cast<int>(index), ticked); });
    }
    bind(m_ui->cwnSoundFreq, c.cwnSoundFreq, "SoundFreq", "0.\" Hz\"");
    bind(m_ui->cwnSoundDuration, c.cwnSoundDuration, "SoundDuration", "0.### \"s\"");
    m_ui->fraSound->setEnabled(c.soundUsable);
    if (!c.soundUsable) m_ui->fraSound->setToolTip(tr("This machine or this setup has no sound output."));
}

void frmProperties::bindOptions() {
    SetupControls& c = m_dialog.controls();
    bind(m_ui->chkOffsets, c.chkOffsets);
    bind(m_ui->chkPauseToReset, c.chkPauseToReset);
    bind(m_ui->chkComments, c.chkComments);
    bind(m_ui->chkRandom, c.chkRandom);
}

void frmProperties::bindFile() {
    SetupControls& c = m_dialog.controls();
    bind(m_ui->chkAutosave, c.chkAutosave);
    bind({m_ui->optSaveType_0, m_ui->optSaveType_1}, c.optSaveType);
    bind(m_ui->txtFilename, c.txtFilename);
    bind(m_ui->CWNumTrial, c.CWNumTrial, "TrialNumber", "0", true);
    bindFolder();
}

void frmProperties::bindFolder() {
    const auto show = [this](const QString& folder) {
        m_ui->txtFolder->setText(folder);
        m_ui->txtFolder->setCursorPosition(static_cast<int>(folder.size())); // its last part is what tells it apart
    };
    show(QString::fromStdString(m_dialog.controls().txtFolder));
    connect(m_ui->txtFolder, &QLineEdit::textChanged, this, [this](const QString& entered) {
        m_dialog.txtFolder_Changed(entered.toStdString());
        showState();
    });
    connect(m_ui->cmdBrowse, &QPushButton::clicked, this, [this, show] {
        const auto chosen = QtFileDialogs(this).askFolder(tr("Folder in which trials are saved"),
                                                          pathFromText(m_dialog.controls().txtFolder));
        if (chosen) show(QString::fromStdString(pathText(*chosen)));
    });
}

void frmProperties::bindDevice() {
    constexpr int linesOfName = 5; // of the longest usual name; the tool tip has room for any
    m_ui->txtDevice->setFixedHeight(
        m_ui->txtDevice->fontMetrics().lineSpacing() * linesOfName +
        2 * (m_ui->txtDevice->frameWidth() + qRound(m_ui->txtDevice->document()->documentMargin())));
    const FieldRange range = rangeOf("Device");
    m_ui->cwnDevice->setRange(range.lowest, range.highest);
    m_ui->cwnDevice->setWhole(true);
    m_ui->cwnDevice->setValue(m_dialog.controls().cwnDevice);
    connect(m_ui->cwnDevice, &CWNumEdit::valueChanged, this, [this](double number) {
        m_dialog.cwnDevice_ValueChanged(number);
        showState();
    });
}

// What follows from the values
// -----------------------------------------------------------------------------------------

void frmProperties::showState() {
    const SetupControls& c = std::as_const(m_dialog).controls();
    m_ui->fraTriggering->setEnabled(c.triggerConditionsEnabled());
    const std::array delays{m_ui->cwnLatency_0, m_ui->cwnLatency_1, m_ui->cwnLatency_2};
    for (std::size_t line = 0; line < delays.size(); ++line)
        delays[line]->setEnabled(c.cbDIO[line]);
    for (QWidget* each : {static_cast<QWidget*>(m_ui->cwnSoundFreq), static_cast<QWidget*>(m_ui->cwnSoundDuration),
                          static_cast<QWidget*>(m_ui->lblSoundFreq), static_cast<QWidget*>(m_ui->lblSoundDuration)})
        each->setEnabled(c.toneEnabled());
    for (QRadioButton* each : {m_ui->optSaveType_0, m_ui->optSaveType_1})
        each->setEnabled(c.chkAutosave);
    m_ui->txtFolder->setToolTip(tr("Enter the folder in which trials are saved.") + QLatin1Char('\n') +
                                QString::fromStdString(c.txtFolder));
    const QString name = QString::fromStdString(c.txtDevice);
    m_ui->txtDevice->setPlainText(name);
    m_ui->txtDevice->setToolTip(tr("Name of the A/D board.") + QLatin1Char('\n') + name);
    showMeaning();
}

void frmProperties::tell(const QString& text) {
    m_told = text;
    showMeaning();
}

void frmProperties::showMeaning() {
    const SetupMeaning meaning = m_dialog.meaning();
    QStringList parts;
    const auto add = [&parts](const char* pattern, const QString& text) {
        if (!text.isEmpty()) parts << QString::fromLatin1(pattern).arg(text.toHtmlEscaped());
    };
    add("<b>%1</b>", m_told);
    add("%1", QString::fromStdString(meaning.summary));
    add("<b>%1</b>", QString::fromStdString(meaning.warnings));
    m_ui->lblMeaning->setText(parts.join(QLatin1Char(' ')));
}

void frmProperties::cmdOK_Click() {
    // What was refused stands in the line already.
    if (m_boxes->askForCorrection()) return;
    if (m_dialog.cmdOK_Click()) accept();
}

void frmProperties::reject() {
    m_dialog.cmdCancel_Click();
    QDialog::reject();
}

void frmProperties::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    CenterForm(this, parentWidget()->window());
}

} // namespace tavex2
