#include "platform/Display.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tavex2 {

bool displayAvailable() {
    constexpr std::array variables{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return std::ranges::any_of(variables, [](const char* name) {
        const char* value = std::getenv(name);
        return value != nullptr && *value != '\0';
    });
}

bool displayMayBeMissing() {
    return true;
}

} // namespace tavex2
