#include "app/cli/ConsoleStream.h"

#include "base/PlainText.h"

#include <string_view>

namespace tavex2 {

bool ConsoleStream::Buffer::handOn(std::size_t length) {
    m_to << printable(std::string_view(m_text).substr(0, length), LineBreaks::Keep);
    m_text.erase(0, length);
    return m_to.good();
}

std::streambuf::int_type ConsoleStream::Buffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
    const char text = traits_type::to_char_type(character);
    return xsputn(&text, 1) == 1 ? character : traits_type::eof();
}

std::streamsize ConsoleStream::Buffer::xsputn(const char* text, std::streamsize length) {
    m_text.append(text, static_cast<std::size_t>(length));
    const std::size_t lastLineEnd = m_text.rfind('\n');
    return lastLineEnd == std::string::npos || handOn(lastLineEnd + 1) ? length : 0;
}

int ConsoleStream::Buffer::sync() {
    return handOn(m_text.size()) && m_to.flush().good() ? 0 : -1;
}

} // namespace tavex2
