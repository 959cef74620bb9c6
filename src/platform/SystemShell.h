#pragma once

#include "platform/Shell.h"

#include <memory>

namespace tavex2 {

/// Starts programs the way of this system.
std::unique_ptr<Shell> systemShell();

} // namespace tavex2
