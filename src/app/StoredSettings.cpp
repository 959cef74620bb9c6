#include "app/StoredSettings.h"

#include "base/BooleanText.h"

namespace tavex2 {

namespace {

StoredKey ownKey(const OwnSetting& setting) {
    return {"Tavex2", "Startup", setting.storedKey};
}

} // namespace

std::string readText(const SettingsStore& store, const StoredKey& key, std::string_view whenMissing) {
    return store.read(key.application, key.section, key.key).value_or(std::string(whenMissing));
}

Result<void> writeText(SettingsStore& store, const StoredKey& key, std::string_view value) {
    return store.write(key.application, key.section, key.key, value);
}

bool readBoolean(const SettingsStore& store, const StoredKey& key) {
    return booleanOf(readText(store, key, "")).value_or(false);
}

Result<void> writeBoolean(SettingsStore& store, const StoredKey& key, bool value) {
    return writeText(store, key, value ? "True" : "False");
}

void readOwn(const SettingsStore& store, const OwnSetting& setting) {
    if (!setting.set(readText(store, ownKey(setting), ""))) setting.reset();
}

Result<void> writeOwn(SettingsStore& store, const OwnSetting& setting) {
    return writeText(store, ownKey(setting), setting.text());
}

} // namespace tavex2
