#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace tavex2 {

/// What went wrong, for callers that decide by the kind of an error.
enum class ErrorKind {
    InvalidValue,  ///< a setting or an argument is outside what is allowed
    NotFound,      ///< a file, folder, board or channel does not exist
    BadFormat,     ///< a file is of another kind, cut short or damaged
    ReadFailed,    ///< the system refused to read
    WriteFailed,   ///< the system refused to write (read-only, full, no permission)
    OutOfMemory,   ///< the data do not fit into this machine's memory
    Refused,       ///< the board cannot do what was asked
    Cancelled,     ///< the user stopped the work
    WrongVersion,  ///< a file is of the right kind but of a version that cannot be read
    WrongUsage,    ///< the command line asks for something that the program does not have
    AlreadyExists, ///< a file of that name exists and must not be replaced
};

/// An error that can be shown as it stands: `text` says in one or more sentences what is wrong and what to do.
struct Error {
    ErrorKind kind = ErrorKind::InvalidValue;
    std::string text;
};

/// Either a value or an Error; the only way in which failures cross a folder.
template <class T>
class [[nodiscard]] Result {
  public:
    Result(T value) : m_content(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_content(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return m_content.index() == 0; }

    /// The value; only when the result holds one.
    T& value() & { return std::get<0>(m_content); }
    const T& value() const& { return std::get<0>(m_content); }
    T&& value() && { return std::get<0>(std::move(m_content)); }

    /// The error; only when the result holds one.
    const Error& error() const { return std::get<1>(m_content); }

  private:
    std::variant<T, Error> m_content;
};

/// The result of work that gives nothing back.
template <>
class [[nodiscard]] Result<void> {
  public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) {}

    explicit operator bool() const { return !m_error.has_value(); }
    const Error& error() const { return *m_error; }

  private:
    std::optional<Error> m_error;
};

} // namespace tavex2
