#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tavex2 {

/// Fixed text of N 8-bit characters: padded on the right with blanks, cut at N, NUL-filled while never set.
template <std::size_t N>
class FixedText {
  public:
    FixedText() = default;
    FixedText(std::string_view text) { assign(text); }

    /// Takes the first N characters of `text` and pads with blanks.
    void assign(std::string_view text) {
        m_bytes.fill(' ');
        std::copy_n(text.begin(), std::min(N, text.size()), m_bytes.begin());
    }

    /// True while nothing was ever assigned: the first character is NUL.
    bool neverSet() const { return m_bytes[0] == '\0'; }

    /// The text up to the first NUL without the blanks that fill it up; those in front of it stay.
    std::string text() const {
        const std::string_view all(m_bytes.data(), N);
        const std::string_view used = all.substr(0, std::min(all.find('\0'), N));
        return std::string(used.substr(0, used.find_last_not_of(' ') + 1));
    }

    /// The same with blanks removed at both ends.
    std::string trimmed() const {
        const std::string used = text();
        return used.substr(std::min(used.find_first_not_of(' '), used.size()));
    }

    std::array<char, N>& bytes() { return m_bytes; }
    const std::array<char, N>& bytes() const { return m_bytes; }

    friend bool operator==(const FixedText&, const FixedText&) = default;

  private:
    std::array<char, N> m_bytes{};
};

} // namespace tavex2
