#include "app/StoredSettings.h"

#include "base/BooleanText.h"

namespace tavex2 {

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

} // namespace tavex2
