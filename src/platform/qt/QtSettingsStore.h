#pragma once

#include "platform/SettingsStore.h"

namespace tavex2 {

/// The settings of the user: one INI file per application name in the user's configuration folder.
class QtSettingsStore final : public SettingsStore {
  public:
    std::optional<std::string> read(std::string_view application, std::string_view section,
                                    std::string_view key) const override;
    Result<void> write(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) override;
    std::string location(std::string_view application) const override;
};

} // namespace tavex2
