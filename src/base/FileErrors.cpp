#include "base/FileErrors.h"

#include "base/PathText.h"

#include <cerrno>
#include <string>

namespace tavex2 {

namespace {

bool isFull(std::error_code reason) {
#ifdef EDQUOT
    if (reason == std::error_code(EDQUOT, std::generic_category())) return true; // the user's share of the disk
#endif
    return reason == std::errc::no_space_on_device;
}

bool isForbidden(std::error_code reason) {
    return reason == std::errc::permission_denied || reason == std::errc::operation_not_permitted;
}

} // namespace

Error writeError(const std::filesystem::path& file, std::error_code reason) {
    const std::string name = pathText(file);
    const std::string folder = file.has_parent_path() ? pathText(file.parent_path()) : "the current folder";
    if (reason == std::errc::file_exists)
        return {ErrorKind::AlreadyExists, name + " already exists and is not replaced. Choose another name."};
    if (reason == std::errc::no_such_file_or_directory && !file.has_parent_path())
        return {ErrorKind::NotFound, "The current folder does not exist any more. Choose another folder."};
    if (reason == std::errc::no_such_file_or_directory)
        return {ErrorKind::NotFound, "The folder " + folder + " does not exist. Create it or choose another folder."};
    if (reason == std::errc::not_a_directory)
        return {ErrorKind::NotFound, "There is no folder " + folder +
                                         ", because a part of that path is a file. Choose "
                                         "another folder."};
    if (reason == std::errc::is_a_directory)
        return {ErrorKind::WriteFailed, name + " is a folder. Choose another name."};
    if (isForbidden(reason))
        return {ErrorKind::WriteFailed, "You have no permission to write " + name +
                                            ". Choose another name or folder, or have the permission changed."};
    if (reason == std::errc::read_only_file_system)
        return {ErrorKind::WriteFailed, "The disk that holds " + folder + " is read-only. Choose another folder."};
    if (isFull(reason))
        return {ErrorKind::WriteFailed,
                "The disk that holds " + folder + " is full. Free some space or choose another folder."};
    if (reason == std::errc::file_too_large)
        return {ErrorKind::WriteFailed, "The disk that holds " + folder +
                                            " does not take a file of that size. Choose a folder on another disk."};
    if (reason == std::errc::filename_too_long)
        return {ErrorKind::WriteFailed, "The name " + name + " is too long. Choose a shorter one."};
    return {ErrorKind::WriteFailed,
            name + " could not be written (" + reason.message() + "). Check the disk or choose another folder."};
}

Error folderError(const std::filesystem::path& folder, std::error_code reason) {
    std::error_code ignored;
    const bool isFolder = std::filesystem::is_directory(folder, ignored);
    if (!isFolder || reason == std::errc::read_only_file_system || isFull(reason))
        return writeError(folder / "file", reason);
    return {ErrorKind::WriteFailed,
            "The folder " + pathText(folder) + " cannot be written to. Choose another one or change its permissions."};
}

Error readError(const std::filesystem::path& file, std::error_code reason) {
    const std::string name = pathText(file);
    if (reason == std::errc::no_such_file_or_directory || reason == std::errc::not_a_directory)
        return {ErrorKind::NotFound, name + " does not exist. Check the name and the folder."};
    if (reason == std::errc::is_a_directory) return {ErrorKind::ReadFailed, name + " is a folder. Choose a file."};
    if (isForbidden(reason))
        return {ErrorKind::ReadFailed,
                "You have no permission to read " + name + ". Choose another file or have the permission changed."};
    return {ErrorKind::ReadFailed, name + " could not be read (" + reason.message() + "). Check the disk."};
}

} // namespace tavex2
