#pragma once

#include <string>

namespace tavex2 {

/// How the window of what is started appears.
enum class ShowMode { Normal, WithoutActivation };

/// A program, a document or a web page to be opened as by a double click on it. Texts are UTF-8.
struct ShellRequest {
    std::string file;       ///< a program with or without its folder, a document or an address
    std::string parameters; ///< what the program is given: one name, in double quotes or, blanks and all, as it is
    std::string folder;     ///< in which it starts; empty for the current one
    ShowMode show = ShowMode::Normal;
    bool onlyThisProgram = false; ///< no other one will do for the document in the parameters

    friend bool operator==(const ShellRequest&, const ShellRequest&) = default;
};

/// Starts other programs and does not wait for them. User-interface thread.
///
/// A start that fails gives a number, as Windows counts it: above 32 when something was started, else the reason.
class Shell {
  public:
    static constexpr int started = 33;
    static constexpr int fileNotFound = 2;

    virtual ~Shell() = default;

    /// Opens something. Unless only this program will do, one that this system does not have gives way to what the
    /// desktop offers for the document in the parameters.
    void execute(const ShellRequest& request) { m_lastResult = open(request); }

    /// Starts a program by its command line in a normal window that gets the focus.
    void run(const std::string& commandLine) { m_lastResult = start(commandLine); }

    /// The number of the last start.
    int lastResult() const { return m_lastResult; }
    bool lastStarted() const { return m_lastResult > 32; }

    /// Whether a file can be opened for reading; its folder may be empty.
    virtual bool canRead(const std::string& folder, const std::string& name) const = 0;

    /// A file in a folder as this system writes it; a separator at the folder's end is not doubled.
    virtual std::string pathOf(const std::string& folder, const std::string& name) const = 0;

  private:
    virtual int open(const ShellRequest& request) = 0;
    virtual int start(const std::string& commandLine) = 0;

    int m_lastResult = 0;
};

} // namespace tavex2
