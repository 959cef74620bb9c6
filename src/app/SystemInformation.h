#pragma once

#include <string>
#include <vector>

namespace tavex2 {

/// What a bug report needs to know about a machine.
struct SystemFacts {
    std::string operatingSystem;
    std::string toolkit;             ///< name and version of the windowing toolkit
    std::vector<std::string> boards; ///< in the order of their device numbers
    std::string settingsFile;
};

/// The facts, and what the program knows by itself, as a text to be copied, a fact a line.
std::string systemInformation(const SystemFacts& facts);

} // namespace tavex2
