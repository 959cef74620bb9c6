#include "platform/InputFile.h"

#include "base/FileErrors.h"
#include "base/PathText.h"

#include <cerrno>
#include <system_error>

namespace tavex2 {

namespace fs = std::filesystem;

Result<InputFile> openForReading(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        return readError(path, std::make_error_code(std::errc::no_such_file_or_directory));
    if (error) return readError(path, error);
    if (fs::is_directory(status)) return readError(path, std::make_error_code(std::errc::is_a_directory));
    if (!fs::is_regular_file(status))
        return Error{ErrorKind::ReadFailed,
                     pathText(path) + " is not an ordinary file but a pipe or a device. Choose a file."};

    InputFile file;
    errno = 0;
    file.stream.open(path, std::ios::binary);
    if (!file.stream) return readError(path, {errno != 0 ? errno : EIO, std::generic_category()});
    file.bytes = fs::file_size(path, error);
    if (error) return readError(path, error);
    return file;
}

} // namespace tavex2
