#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tavex2 {

/// What a file dialog is opened with. Filters are alternating names and patterns separated by vertical bars.
struct FileDialogRequest {
    std::string title;
    std::string defaultExtension; ///< added to a name typed without one, with or without its dot
    std::string filter;
    int filterIndex = 0;          ///< entry that is selected first
    std::filesystem::path folder; ///< where the dialog starts; empty for the current directory
    std::string initialName;
};

/// The common file dialog. User-interface thread only; no value when the user cancelled.
class FileDialogs {
  public:
    virtual ~FileDialogs() = default;
    /// Asks for a name to write to, and before replacing an existing file.
    virtual std::optional<std::filesystem::path> askSaveName(const FileDialogRequest& request) = 0;
    /// Asks for a file that exists.
    virtual std::optional<std::filesystem::path> askOpenName(const FileDialogRequest& request) = 0;
};

} // namespace tavex2
