#pragma once

#include "platform/FileDialogs.h"
#include "platform/Messages.h"

#include <filesystem>
#include <optional>

namespace tavex2 {

/// Asks for a name to save under. One that ends in no extension that the program knows, as "Pilot1.5", gets the
/// request's. The dialog has asked about replacing the name that was typed; where completing it leads to another file
/// that exists, that is asked about here. Gives a whole path, an empty one when the dialog does, and no value when the
/// user cancelled or the file is to stay. User-interface thread only.
std::optional<std::filesystem::path> askNameToSave(FileDialogs& dialogs, Messages& messages,
                                                   const FileDialogRequest& request);

} // namespace tavex2
