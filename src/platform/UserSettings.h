#pragma once

#include "platform/SettingsStore.h"

#include <memory>

namespace tavex2 {

/// The settings of the user where this system keeps such things.
std::unique_ptr<SettingsStore> userSettings();

} // namespace tavex2
