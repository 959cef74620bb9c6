#pragma once

#include <string>

namespace tavex2 {

/// A program or a document to be started as by a double click on it. Texts are UTF-8.
struct ShellRequest {
    std::string file;       ///< the program, with or without its folder
    std::string parameters; ///< its command line; paths with blanks in double quotes
    std::string folder;     ///< in which it starts; empty for the current one
};

/// Starts other programs.
class Shell {
  public:
    virtual ~Shell() = default;

    /// Starts a program and does not wait for it; False when nothing could be started. A program that this system does
    /// not have gives way to what the desktop offers for the document in the parameters.
    virtual bool execute(const ShellRequest& request) = 0;
};

} // namespace tavex2
