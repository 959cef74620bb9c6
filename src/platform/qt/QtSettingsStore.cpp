#include "platform/qt/QtSettingsStore.h"

#include "platform/UserSettings.h"

#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace tavex2 {

namespace {

QString text(std::string_view view) {
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

/// One store per application name, so that sibling programs find what they share.
QSettings open(std::string_view application) {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, text(application), text(application));
}

QString path(std::string_view section, std::string_view key) {
    return text(section) + QLatin1Char('/') + text(key);
}

} // namespace

std::optional<std::string> QtSettingsStore::read(std::string_view application, std::string_view section,
                                                 std::string_view key) const {
    const QVariant value = open(application).value(path(section, key));
    if (!value.isValid()) return std::nullopt;
    // An INI file that was edited by hand may hold a comma, which the reader takes for a list.
    if (value.typeId() == QMetaType::QStringList) return value.toStringList().join(QLatin1String(", ")).toStdString();
    return value.toString().toStdString();
}

Result<void> QtSettingsStore::write(std::string_view application, std::string_view section, std::string_view key,
                                    std::string_view value) {
    QSettings settings = open(application);
    settings.setValue(path(section, key), text(value));
    settings.sync();
    if (settings.status() == QSettings::NoError) return {};
    return Error{ErrorKind::WriteFailed, settings.fileName().toStdString() + " cannot be written."};
}

std::string QtSettingsStore::location(std::string_view application) const {
    return open(application).fileName().toStdString();
}

std::unique_ptr<SettingsStore> userSettings() {
    return std::make_unique<QtSettingsStore>();
}

} // namespace tavex2
