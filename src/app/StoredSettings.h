#pragma once

#include "acquisition/OwnSettings.h"
#include "platform/SettingsStore.h"

#include <string>
#include <string_view>

namespace tavex2 {

/// Where one setting is kept in the per-user store.
struct StoredKey {
    std::string_view application;
    std::string_view section;
    std::string_view key;
};

/// Every key that the program reads or writes, but those of the settings that OwnSettings.h lists. Paths of this
/// program lie under its own name; the viewer and the spreadsheet lie under the laboratory-wide name, so that sibling
/// programs share them.
namespace stored {
inline constexpr StoredKey programDir{"Tavex2", "Startup", "Progdir"};
inline constexpr StoredKey dataDir{"Tavex2", "Startup", "Datadir"};
inline constexpr StoredKey lastFile{"Tavex2", "Startup", "Lastfile"};
inline constexpr StoredKey lastSetupFile{"Tavex2", "Startup", "Lastsetupfile"};
inline constexpr StoredKey recentFiles{"Tavex2", "Startup", "Recentfiles"};
inline constexpr StoredKey fullscreen{"Tavex2", "Startup", "Fullscreen"};
/// Board specifications by device number, separated by semicolons; empty for the boards that are found.
inline constexpr StoredKey boards{"Tavex2", "Startup", "Boards"};
inline constexpr StoredKey siblingProgramDir{"Orvanta", "Startup", "Progdir"};
inline constexpr StoredKey viewer{"Orvanta", "Startup", "Viewer"};
inline constexpr StoredKey spreadsheet{"Orvanta", "Startup", "Spreadsheet"};
/// The sibling analysis program's own settings.
inline constexpr StoredKey siblingOwnProgramDir{"Lumidor2", "Startup", "Progdir"};
inline constexpr StoredKey siblingDataDir{"Lumidor2", "Startup", "Datadir"};
/// Addresses of web pages.
inline constexpr StoredKey softwarePage{"Tavex2", "Startup", "Website"};
inline constexpr StoredKey hardwarePage{"Tavex2", "Startup", "Hardwarewebsite"};
} // namespace stored

/// The stored text, or `whenMissing` when the key does not exist (an empty text counts as existing).
std::string readText(const SettingsStore& store, const StoredKey& key, std::string_view whenMissing);
Result<void> writeText(SettingsStore& store, const StoredKey& key, std::string_view value);

/// Booleans are stored as "True" and "False". What people and other programs write is understood too (booleanOf); a
/// missing key or any other text is False.
bool readBoolean(const SettingsStore& store, const StoredKey& key);
Result<void> writeBoolean(SettingsStore& store, const StoredKey& key, bool value);

/// A setting of the program's own, under its key. A missing or unfit text gives the default.
void readOwn(const SettingsStore& store, const OwnSetting& setting);
Result<void> writeOwn(SettingsStore& store, const OwnSetting& setting);

} // namespace tavex2
