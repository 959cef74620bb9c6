#include "platform/qt/QtMessages.h"

#include <QMessageBox>
#include <QString>

namespace tavex2 {

namespace {

QMessageBox::Icon iconFor(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::None:
        return QMessageBox::NoIcon;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttonsFor(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::Ok:
        return QMessageBox::Ok;
    case MessageButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MessageButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MessageButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

/// The line ends of the program's fixed texts as the box takes them.
QString withLineFeeds(const std::string& text) {
    QString result = QString::fromStdString(text);
    result.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    result.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return result;
}

} // namespace

MessageAnswer QtMessages::show(const Message& message) {
    QMessageBox box(iconFor(message.icon), QString::fromStdString(message.title), withLineFeeds(message.text),
                    buttonsFor(message.buttons), m_parent);
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setTextFormat(Qt::PlainText);
    if (message.noIsDefault) box.setDefaultButton(QMessageBox::No);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return MessageAnswer::Yes;
    case QMessageBox::No:
        return MessageAnswer::No;
    case QMessageBox::Cancel:
        return MessageAnswer::Cancel;
    // Escape and the close box of a question without Cancel change nothing: they are a No.
    default:
        return message.buttons == MessageButtons::YesNo ? MessageAnswer::No : MessageAnswer::Ok;
    }
}

} // namespace tavex2
