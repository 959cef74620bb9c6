#include "platform/qt/TextForm.h"

#include "platform/qt/InputBox.h"
#include "platform/qt/QtMessages.h"

namespace tavex2 {

std::string askFileText(QWidget* form, const QString& title, const QString& prompt, const std::string& proposal) {
    const QString answer = inputBox(form, title, prompt, fromFileText(proposal)).value_or(QString());
    std::string text = toFileText(answer);
    if (fromFileText(text) != answer)
        QtMessages(form).show({"Trial files hold Western European characters only. What they cannot hold became \"?\".",
                               title.toStdString(), MessageIcon::Information, MessageButtons::Ok});
    return text;
}

} // namespace tavex2
