#pragma once

#include "base/PlainText.h"

#include <optional>
#include <string>
#include <string_view>

namespace tavex2 {

/// The yes or no that a text stands for: True, yes, 1 and -1, or False, no and 0, in capital or small letters and with
/// blanks around them. No value for anything else.
inline std::optional<bool> booleanOf(std::string_view text) {
    const std::string word = lowerCase(withoutBlanks(text));
    if (word == "true" || word == "yes" || word == "1" || word == "-1") return true;
    if (word == "false" || word == "no" || word == "0") return false;
    return std::nullopt;
}

} // namespace tavex2
