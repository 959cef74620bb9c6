#include "files/ui/frmComments.h"

#include "platform/qt/CenterForm.h"
#include "platform/qt/TextForm.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLocale>
#include <QTableWidget>
#include <QVBoxLayout>

namespace tavex2 {

frmComments::frmComments(TrialComments& comments, int trialNumber, QWidget* mainWindow)
    : QDialog(mainWindow), m_editor(comments), m_trialNumber(trialNumber) {
    setObjectName(QStringLiteral("frmComments"));
    setWindowTitle(tr("Add or Edit Comments"));
    setLayout(new QVBoxLayout);
    addGrid();
    addButtons();
    showLines();
    m_grid->setCurrentCell(0, 0);
}

void frmComments::addGrid() {
    m_grid = new QTableWidget(CommentsEditor::lines, 2, this);
    m_grid->setObjectName(QStringLiteral("grdComments"));
    m_grid->setAccessibleName(tr("Comment lines"));
    m_grid->setToolTip(tr("Click a line, or press Enter on it, to edit it"));
    QFont font(QStringLiteral("Courier"));
    font.setStyleHint(QFont::TypeWriter);
    m_grid->setFont(font);
    m_grid->horizontalHeader()->hide();
    m_grid->verticalHeader()->hide();
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setTabKeyNavigation(false);
    m_grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (int row = 0; row < CommentsEditor::lines; ++row)
        for (int column = 0; column < 2; ++column)
            m_grid->setItem(row, column, new QTableWidgetItem);

    const int character = QFontMetrics(font).horizontalAdvance(QLatin1Char('0'));
    constexpr int charactersOfALine = 61;
    m_grid->setColumnWidth(0, 9 * character);
    m_grid->setColumnWidth(1, (charactersOfALine + 2) * character);
    m_grid->setFixedSize(m_grid->horizontalHeader()->length() + 2 * m_grid->frameWidth(),
                         m_grid->verticalHeader()->length() + 2 * m_grid->frameWidth());
    layout()->addWidget(m_grid);

    connect(m_grid, &QTableWidget::cellClicked, this, [this](int row) { edit(row); });
    whenEntered(m_grid, [this] { edit(m_grid->currentRow()); });
}

void frmComments::addButtons() {
    auto* row = new QHBoxLayout;
    const auto add = [&](const char* name, const QString& text, const QString& tip, const auto& command) {
        addButton(*this, *row, name, text, tip, command);
    };
    add("cmdDateTime", tr("Insert date && time"), tr("Put date, time and trial number into line 4"), [this] {
        const QDateTime now = QDateTime::currentDateTime();
        const QLocale locale = QLocale::system();
        m_editor.cmdDateTime_Click(toFileText(locale.toString(now.date(), QLocale::ShortFormat)),
                                   toFileText(locale.toString(now.time(), QLocale::ShortFormat)), m_trialNumber);
        showLines();
    });
    add("cmdClear", tr("&Erase"), tr("Empty all lines; nothing is stored before Done"), [this] {
        m_editor.cmdClear_Click();
        showLines();
    });
    row->addStretch();
    add("cmdSave", tr("&Done"), tr("Store the comments with the trial"), [this] {
        m_editor.cmdSave_Click();
        accept();
    });
    add("cmdCancel", tr("&Cancel"), tr("Close and keep the comments as they were"), [this] { reject(); });
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void frmComments::edit(int row) {
    if (row < 0) return;
    m_grid->setCurrentCell(row, 1);
    m_editor.enter(row, askFileText(this, tr("Enter Comment"), tr("Enter a comment (max. 60 characters)."),
                                    m_editor.proposal(row)));
    showLines();
}

void frmComments::showLines() {
    for (int row = 0; row < CommentsEditor::lines; ++row) {
        m_grid->item(row, 0)->setText(tr("Line %1").arg(row + 1));
        m_grid->item(row, 1)->setText(fromFileText(m_editor.line(row)));
    }
}

void frmComments::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    CenterForm(this, parentWidget()->window());
}

} // namespace tavex2
