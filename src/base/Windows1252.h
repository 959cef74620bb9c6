#pragma once

#include <string>
#include <string_view>

namespace tavex2 {

// Files hold 8-bit text (Windows-1252); windows, the command line and file names use UTF-8. Text is converted where it
// crosses from one to the other, nowhere else.

/// UTF-8 as Windows-1252. A character that the 8-bit set lacks becomes "?", and so does each ill-formed piece.
std::string windows1252FromUtf8(std::string_view text);

/// Windows-1252 as UTF-8. The five bytes without a character (81, 8D, 8F, 90, 9D hexadecimal) become the control
/// characters of the same number, so that every text comes back unchanged from UTF-8.
std::string utf8FromWindows1252(std::string_view text);

} // namespace tavex2
