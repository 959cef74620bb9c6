#include "files/FreeName.h"

#include "base/PathText.h"

#include <string>
#include <system_error>

namespace tavex2 {

std::filesystem::path freeName(const std::filesystem::path& folder, std::string_view stem, std::string_view extension) {
    for (int number = 1;; ++number) {
        std::string name(stem);
        if (number > 1) name += " (" + std::to_string(number) + ")";
        name += extension;
        // A link that leads nowhere takes its name too. A folder that cannot be looked into shows itself at writing.
        std::filesystem::path file = folder / pathFromText(name);
        std::error_code error;
        if (!std::filesystem::exists(std::filesystem::symlink_status(file, error))) return file;
    }
}

Result<std::filesystem::path> writeToFreeName(const std::filesystem::path& folder, std::string_view stem,
                                              std::string_view extension,
                                              const std::function<Result<void>(const std::filesystem::path&)>& write) {
    for (;;) {
        std::filesystem::path path = freeName(folder, stem, extension);
        const Result<void> written = write(path);
        if (written) return path;
        if (written.error().kind != ErrorKind::AlreadyExists) return written.error();
    }
}

} // namespace tavex2
