#pragma once

#include "base/Result.h"

#include <optional>
#include <string>
#include <string_view>

namespace tavex2 {

/// The per-user application-settings store: text values addressed by application, section and key.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    /// The stored text; no value when the key is missing (an existing but empty key gives an empty text).
    virtual std::optional<std::string> read(std::string_view application, std::string_view section,
                                            std::string_view key) const = 0;

    /// Stores a text for good: it is there when the program starts again. The WriteFailed error says where it could not
    /// be stored.
    virtual Result<void> write(std::string_view application, std::string_view section, std::string_view key,
                               std::string_view value) = 0;

    /// Where an application's settings are kept, for people to read.
    virtual std::string location(std::string_view application) const = 0;
};

} // namespace tavex2
