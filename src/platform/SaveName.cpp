#include "platform/SaveName.h"

#include "base/FileNames.h"
#include "base/PathText.h"

#include <string>
#include <system_error>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

bool mayReplace(const fs::path& path, Messages& messages) {
    std::error_code error;
    if (!fs::exists(path, error)) return true;
    return messages.show({pathText(path) + " already exists.\nDo you want to replace it?", "Replace File",
                          MessageIcon::Question, MessageButtons::YesNo}) == MessageAnswer::Yes;
}

} // namespace

std::optional<fs::path> askNameToSave(FileDialogs& dialogs, Messages& messages, const FileDialogRequest& request) {
    const std::optional<fs::path> typed = dialogs.askSaveName(request);
    if (!typed || typed->empty()) return typed;
    const fs::path whole = wholePath(*typed);
    const fs::path path = withExtension(whole, "." + request.defaultExtension);
    if (path != whole && !mayReplace(path, messages)) return std::nullopt;
    return path;
}

} // namespace tavex2
