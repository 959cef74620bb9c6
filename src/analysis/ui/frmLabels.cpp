#include "analysis/ui/frmLabels.h"

#include "base/Decimal.h"
#include "display/ui/ColourSwatch.h"
#include "platform/qt/CenterForm.h"
#include "platform/qt/TextForm.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace tavex2 {

namespace {

/// Lays the buttons of a control array out in two rows of a frame; `make` makes the one of an index 1..16.
template <class Make>
QGroupBox* frameOfBoxes(QWidget* form, const char* name, const QString& title, const Make& make) {
    auto* frame = new QGroupBox(title, form);
    frame->setObjectName(QLatin1String(name));
    auto* grid = new QGridLayout(frame);
    constexpr int columns = ChannelLabels::boxes / 2;
    for (int index = 1; index <= ChannelLabels::boxes; ++index)
        grid->addWidget(make(index, frame), (index - 1) / columns, (index - 1) % columns);
    return frame;
}

} // namespace

frmLabels::frmLabels(ProgramState& state, QWidget* mainWindow) : QDialog(mainWindow), m_labels(state) {
    setObjectName(QStringLiteral("frmLabels"));
    setWindowTitle(tr("Channel Labels and Units"));
    auto* whole = new QVBoxLayout(this);
    auto* facts = new QFormLayout;
    whole->addLayout(facts);
    m_title = addFact(*facts, "txtTitle", tr("Title:"), tr("Title from data file"));
    m_rate = addFact(*facts, "txtRate", tr("Rate:"), tr("Sampling rate of forces (Hz per channel)"));
    m_duration = addFact(*facts, "txtDuration", tr("Duration:"), tr("Sampling rate of forces (Hz per channel)"));
    addOptions();
    addLists();
    addChoices();
    addButtons();
    showFacts();
    RewriteValues();
    m_names->setFocus();
}

QLineEdit* frmLabels::addFact(QFormLayout& form, const char* name, const QString& caption, const QString& tip) {
    auto* box = new QLineEdit(this);
    box->setObjectName(QLatin1String(name));
    box->setToolTip(tip);
    box->setReadOnly(true);
    form.addRow(caption, box);
    return box;
}

QListWidget* frmLabels::makeList(const char* name, const QString& tip) {
    auto* list = new QListWidget(this);
    list->setObjectName(QLatin1String(name));
    list->setAccessibleName(tip);
    list->setToolTip(tip);
    return list;
}

void frmLabels::prepareBox(QAbstractButton& box, const char* array, int index, const QString& tip) const {
    box.setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(array)).arg(index));
    box.setText(QString::fromStdString(zeroPadded(index - 1, 2)));
    box.setToolTip(tip.arg(index - 1));
    box.setAccessibleName(box.toolTip());
    box.setEnabled(index <= m_labels.channels());
}

void frmLabels::addOptions() {
    m_options = new QButtonGroup(this);
    layout()->addWidget(frameOfBoxes(this, "fraOptions", tr("Channel to edit"), [this](int index, QWidget* frame) {
        auto* option = new QRadioButton(frame);
        prepareBox(*option, "option1", index, tr("Work on channel %1; Enter edits its label"));
        m_options->addButton(option, index - 1);
        connect(option, &QRadioButton::clicked, this, [this, index] { workOn(index - 1); });
        whenEntered(option, [this, index] { editLabel(index - 1); });
        return option;
    }));
}

void frmLabels::addChoices() {
    layout()->addWidget(
        frameOfBoxes(this, "fraCheckbox", tr("Channels in the preview"), [this](int index, QWidget* frame) {
            auto* box = new QCheckBox(frame);
            prepareBox(*box, "chkChoose", index, tr("Show channel %1 in the preview; without any, all are shown"));
            connect(box, &QCheckBox::toggled, this, [this, index](bool checked) {
                m_labels.chkChoose_Click(index, checked);
                showPreview();
            });
            return box;
        }));
    m_preview = new QListWidget(this);
    m_preview->setObjectName(QStringLiteral("lstPreview"));
    m_preview->setAccessibleName(tr("Preview"));
    m_preview->setToolTip(tr("Colours, labels and units as the legend will tell them"));
    m_preview->setFlow(QListView::LeftToRight);
    m_preview->setWrapping(true);
    m_preview->setResizeMode(QListView::Adjust);
    m_preview->setSpacing(3);
    m_preview->setSelectionMode(QAbstractItemView::NoSelection);
    m_preview->setIconSize(swatchSize);
    m_preview->setFixedHeight(3 * fontMetrics().lineSpacing() + 24);
    layout()->addWidget(m_preview);
}

void frmLabels::showPreview() {
    m_preview->clear();
    for (const int channel : m_labels.previewed())
        m_preview->addItem(
            new QListWidgetItem(colourSwatch(traceColour(channel)),
                                fromFileText(m_labels.label(channel) + " (" + m_labels.unit(channel) + ")")));
}

/// The lists and the option buttons show which channel it is; the seventeenth and further ones have no button.
void frmLabels::workOn(int channel) {
    if (channel < 0) return;
    m_labels.workOn(channel);
    for (QListWidget* list : {m_nums, m_names, m_units})
        list->setCurrentRow(channel);
    m_options->setExclusive(false);
    for (QAbstractButton* each : m_options->buttons())
        each->setChecked(m_options->id(each) == channel);
    m_options->setExclusive(true);
}

void frmLabels::addLists() {
    m_nums = makeList("lstNums", tr("Channel"));
    m_names = makeList("lstLabels", tr("Click to enter a new label"));
    m_units = makeList("lstUnits", tr("Clcik to enter a new unit"));
    auto* lists = new QHBoxLayout;
    lists->addWidget(m_nums, 1);
    lists->addWidget(m_names, 3);
    lists->addWidget(m_units, 2);
    static_cast<QVBoxLayout*>(layout())->addLayout(lists);
    // Side by side they are one table: they show the same rows.
    for (QListWidget* one : {m_nums, m_names, m_units})
        for (QListWidget* other : {m_nums, m_names, m_units})
            if (one != other)
                connect(one->verticalScrollBar(), &QScrollBar::valueChanged, other->verticalScrollBar(),
                        &QScrollBar::setValue);
    for (QListWidget* each : {m_nums, m_names, m_units})
        connect(each, &QListWidget::currentRowChanged, this, &frmLabels::workOn);
    whenChosen(m_names, &frmLabels::editLabel);
    whenChosen(m_units, &frmLabels::editUnit);
}

void frmLabels::whenChosen(QListWidget* list, void (frmLabels::*edit)(int)) {
    connect(list, &QListWidget::itemClicked, this,
            [this, list, edit](QListWidgetItem* item) { (this->*edit)(list->row(item)); });
    whenEntered(list, [this, list, edit] {
        if (list->currentRow() >= 0) (this->*edit)(list->currentRow());
    });
}

void frmLabels::addButtons() {
    auto* row = new QHBoxLayout;
    const auto add = [&](const char* name, const QString& text, const QString& tip, const auto& command) {
        addButton(*this, *row, name, text, tip, command);
    };
    add("cmdSelect", tr("&Copy Units"), tr("Press to select all channels or copy last entry to all channels"), [this] {
        m_labels.cmdSelect_Click();
        RewriteValues();
    });
    add("cmdReset", tr("&Reset"), tr("Press to reset selections"), [this] {
        m_labels.cmdReset_Click();
        showFacts();
        RewriteValues();
    });
    row->addStretch();
    add("cmdExit", tr("&Done"), tr("Press after selecting channels"), [this] { accept(); });
    add("cmdCancel", tr("&Cancel"), tr("Press to exit and ignore selections"), [this] { reject(); });
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void frmLabels::editLabel(int channel) {
    m_labels.enterLabel(channel, askFileText(this, tr("Change Labels"), tr("Enter channel label or press Cancel."),
                                             m_labels.label(channel)));
    RewriteValues();
}

void frmLabels::editUnit(int channel) {
    m_labels.enterUnit(channel, askFileText(this, tr("Change Units"), tr("Enter correct units or press Cancel."),
                                            m_labels.unit(channel)));
    RewriteValues();
}

void frmLabels::showFacts() {
    m_title->setText(fromFileText(m_labels.title()));
    m_rate->setText(QString::fromStdString(m_labels.rate()));
    m_duration->setText(QString::fromStdString(m_labels.duration()));
}

/// Fills the lists anew and keeps the channel that is being worked on.
void frmLabels::RewriteValues() {
    const auto fill = [this](QListWidget* list, auto text) {
        const QSignalBlocker quiet(list);
        list->clear();
        for (int channel = 0; channel < m_labels.channels(); ++channel)
            list->addItem(text(channel));
    };
    fill(m_nums, [](int channel) { return QString::fromStdString(zeroPadded(channel, 2)); });
    fill(m_names, [this](int channel) { return fromFileText(m_labels.label(channel)); });
    fill(m_units, [this](int channel) { return fromFileText(m_labels.unit(channel)); });
    workOn(m_labels.workedOn());
    showPreview();
}

/// Also what the close box does.
void frmLabels::reject() {
    m_labels.cmdCancel_Click();
    QDialog::reject();
}

void frmLabels::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    CenterForm(this, parentWidget()->window());
}

} // namespace tavex2
