#include "base/Utf8.h"

namespace tavex2 {

char32_t takeCharacter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (lead < 0x80) return lead;

    const int following = lead >= 0xF0 && lead <= 0xF4 ? 3 : lead >= 0xE0 && lead < 0xF0 ? 2 : lead >= 0xC2 ? 1 : 0;
    if (following == 0 || lead > 0xF4) return illFormed;
    char32_t character = lead & (0x3Fu >> following);
    for (int i = 0; i < following; ++i) {
        if (text.empty() || (static_cast<unsigned char>(text.front()) & 0xC0) != 0x80) return illFormed;
        character = (character << 6) | (static_cast<unsigned char>(text.front()) & 0x3Fu);
        text.remove_prefix(1);
    }
    const bool tooLong = (following == 2 && character < 0x800) || (following == 3 && character < 0x10000);
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    return tooLong || surrogate || character > 0x10FFFF ? illFormed : character;
}

} // namespace tavex2
