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

} // namespace tavex2
