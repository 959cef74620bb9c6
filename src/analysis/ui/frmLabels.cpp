#include "analysis/ui/frmLabels.h"

#include "base/Decimal.h"
#include "platform/qt/CenterForm.h"
#include "platform/qt/TextForm.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QVBoxLayout>

namespace tavex2 {

frmLabels::frmLabels(ProgramState& state, QWidget* mainWindow) : QDialog(mainWindow), m_labels(state) {
    setObjectName(QStringLiteral("frmLabels"));
    setWindowTitle(tr("Channel Labels and Units"));
    auto* whole = new QVBoxLayout(this);
    auto* facts = new QFormLayout;
    whole->addLayout(facts);
    m_title = addFact(*facts, "txtTitle", tr("Title:"), tr("Title from data file"));
    m_rate = addFact(*facts, "txtRate", tr("Rate:"), tr("Sampling rate of forces (Hz per channel)"));
    m_duration = addFact(*facts, "txtDuration", tr("Duration:"), tr("Sampling rate of forces (Hz per channel)"));
    addLists();
    addButtons();
    showFacts();
    RewriteValues();
    m_names->setCurrentRow(0);
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

/// Fills the lists anew and keeps the row that was chosen.
void frmLabels::RewriteValues() {
    const auto fill = [this](QListWidget* list, auto text) {
        const int row = list->currentRow();
        list->clear();
        for (int channel = 0; channel < m_labels.channels(); ++channel)
            list->addItem(text(channel));
        list->setCurrentRow(row);
    };
    fill(m_nums, [](int channel) { return QString::fromStdString(zeroPadded(channel, 2)); });
    fill(m_names, [this](int channel) { return fromFileText(m_labels.label(channel)); });
    fill(m_units, [this](int channel) { return fromFileText(m_labels.unit(channel)); });
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
