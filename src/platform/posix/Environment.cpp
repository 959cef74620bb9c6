#include "platform/Environment.h"

#include <cstdlib>

namespace tavex2 {

std::optional<std::string> environmentValue(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace tavex2
