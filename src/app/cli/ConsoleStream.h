#pragma once

#include <ostream>
#include <streambuf>
#include <string>

namespace tavex2 {

/// A stream for a terminal: what comes from files, names of files included, is shown there and never obeyed (see
/// printable()). Whole lines go on at once. Fails when the stream behind it fails, which a flush tells.
class ConsoleStream final : public std::ostream {
  public:
    /// `to` outlives it.
    explicit ConsoleStream(std::ostream& to) : std::ostream(nullptr), m_buffer(to) { rdbuf(&m_buffer); }
    ~ConsoleStream() override { flush(); }

  private:
    class Buffer final : public std::streambuf {
      public:
        explicit Buffer(std::ostream& to) : m_to(to) {}

      private:
        int_type overflow(int_type character) override;
        std::streamsize xsputn(const char* text, std::streamsize length) override;
        int sync() override;
        bool handOn(std::size_t length);

        std::ostream& m_to;
        std::string m_text; ///< that has not gone on yet
    };

    Buffer m_buffer;
};

} // namespace tavex2
