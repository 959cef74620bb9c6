#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavex2 {

/// Text without the blanks at both ends.
std::string_view withoutBlanks(std::string_view text);

/// Text with small letters for the capital ones of ASCII.
std::string lowerCase(std::string_view text);

/// Whether text holds ASCII control characters, such as tabs and line ends.
bool hasControlCharacters(std::string_view text);

/// UTF-8 text filled with blanks on its left, or on its right, to so many characters; a longer one stands in full.
std::string rightAligned(std::string_view text, std::size_t width);
std::string leftAligned(std::string_view text, std::size_t width);

/// What becomes of line feeds and tabs in printable().
enum class LineBreaks { Keep, Escape };

/// UTF-8 text that a terminal shows and does not obey: control characters, and those that break lines or turn the
/// direction of writing, stand there by their number ("\u001b"), ill-formed bytes as the sign for such. The escapes are
/// those of JSON, so a JSON text stays one.
std::string printable(std::string_view text, LineBreaks lineBreaks);

} // namespace tavex2
