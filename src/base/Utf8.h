#pragma once

#include <string_view>

namespace tavex2 {

/// What takeCharacter() gives for bytes that are no UTF-8: a number that stands for no character.
inline constexpr char32_t illFormed = U'\U0010FFFF';

/// Takes one character off the front of a text that is not empty; illFormed for an ill-formed piece, which is at least
/// one byte long and ends before the first byte that could start or cannot continue a character.
char32_t takeCharacter(std::string_view& text);

} // namespace tavex2
