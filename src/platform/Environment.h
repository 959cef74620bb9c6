#pragma once

#include <optional>
#include <string>

namespace tavex2 {

/// A variable of the environment, as UTF-8; no value when it is not set.
std::optional<std::string> environmentValue(const char* name);

} // namespace tavex2
