#include "platform/Environment.h"

#include "platform/windows/WideText.h"

#include <cstdlib>

namespace tavex2 {

std::optional<std::string> environmentValue(const char* name) {
    const wchar_t* value = ::_wgetenv(wide(name).c_str());
    return value != nullptr ? std::optional(narrow(value)) : std::nullopt;
}

} // namespace tavex2
