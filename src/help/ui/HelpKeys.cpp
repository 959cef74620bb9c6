#include "help/ui/HelpKeys.h"

#include "help/HelpCommands.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QWidget>

namespace tavex2 {

namespace {

bool isHelpKey(const QEvent& event) {
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

} // namespace

HelpKeys::HelpKeys(HelpCommands& commands) : m_commands(commands) {
    qApp->installEventFilter(this);
}

bool HelpKeys::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (!isHelpKey(*event)) break;
        event->accept(); // comes as a key
        return true;
    case QEvent::KeyPress:
        if (!isHelpKey(*event)) break;
        help();
        return true;
    case QEvent::Show:
        if (auto* dialog = qobject_cast<QDialog*>(watched)) describeControls(*dialog);
        break;
    default:
        break;
    }
    return false;
}

void HelpKeys::help() {
    if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
    QWidget* focus = QApplication::focusWidget();
    std::vector<std::string> names;
    for (const QWidget* each = focus != nullptr ? focus : QApplication::activeWindow(); each != nullptr;
         each = each->parentWidget())
        names.push_back(each->objectName().toStdString());
    m_commands.helpAbout(names);
}

void HelpKeys::describeControls(QWidget& window) {
    const std::string name = window.objectName().toStdString();
    const auto controls = window.findChildren<QWidget*>();
    for (QWidget* control : controls) {
        const std::string text = m_commands.whatsThis(name, control->objectName().toStdString());
        if (!text.empty()) control->setWhatsThis(QString::fromStdString(text));
    }
    for (QWidget* each : controls)
        if (auto* label = qobject_cast<QLabel*>(each); label != nullptr && label->buddy() != nullptr)
            label->setWhatsThis(label->buddy()->whatsThis());
}

} // namespace tavex2
