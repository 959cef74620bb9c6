#include "app/ui/frmAbout.h"

#include "platform/qt/CenterForm.h"
#include "platform/qt/DesktopPrograms.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavex2 {

namespace {

QLabel* addText(QVBoxLayout& layout, const char* name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(name));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout.addWidget(label);
    return label;
}

} // namespace

frmAbout::frmAbout(const AboutServices& services, QWidget* mainWindow) : QDialog(mainWindow) {
    const QString title = QStringLiteral("Tavex2");
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(tr("About ") + title);
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    QLabel* heading = addText(*layout, "lblTitle", title, this);
    QFont large = heading->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    heading->setFont(large);
    addText(*layout, "lblVersion", tr("Version ") + QApplication::applicationVersion(), this);
    addText(*layout, "lblDescription",
            tr("Analog Data Acquisition System") + QStringLiteral("\n") + tr("Programmers: the Tavex2 founders"), this);

    auto* buttons = new QDialogButtonBox(this);
    auto* ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("cmdOK"));
    auto* system = buttons->addButton(tr("&System Info..."), QDialogButtonBox::ActionRole);
    system->setObjectName(QStringLiteral("cmdSysInfo"));
    system->setToolTip(tr("Versions, boards and settings, to be copied into a bug report"));
    layout->addWidget(buttons);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(system, &QPushButton::clicked, this, [this, services] {
        if (!services.StartSysInfo()) showInformation(services.information());
    });
}

void frmAbout::showInformation(const std::string& information) {
    QDialog shown(this);
    shown.setObjectName(QStringLiteral("frmSystemInformation"));
    shown.setWindowTitle(tr("System Information"));
    auto* layout = new QVBoxLayout(&shown);
    auto* text = new QPlainTextEdit(QString::fromStdString(information), &shown);
    text->setObjectName(QStringLiteral("txtInformation"));
    text->setReadOnly(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    layout->addWidget(text);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &shown);
    auto* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("cmdCopy"));
    copy->setToolTip(tr("Copy the text"));
    layout->addWidget(buttons);
    if (const QString viewer = systemInformationViewer(); !viewer.isEmpty()) {
        auto* more = buttons->addButton(tr("&More..."), QDialogButtonBox::ActionRole);
        more->setObjectName(QStringLiteral("cmdMore"));
        more->setToolTip(tr("The desktop's own system information"));
        connect(more, &QPushButton::clicked, &shown, [viewer] { QProcess::startDetached(viewer, {}); });
    }
    connect(copy, &QPushButton::clicked, text, [text] { QApplication::clipboard()->setText(text->toPlainText()); });
    connect(buttons, &QDialogButtonBox::rejected, &shown, &QDialog::reject);
    shown.resize(520, 260);
    shown.exec();
}

void frmAbout::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    CenterForm(this, parentWidget()->window());
}

} // namespace tavex2
