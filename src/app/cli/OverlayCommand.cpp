#include "app/cli/OverlayCommand.h"

#include "analysis/Overlays.h"
#include "app/cli/TrialFile.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/TextExport.h"

#include <span>

namespace tavex2 {

Result<void> overlayFiles(const OverlayRequest& request) {
    const std::filesystem::path& table = request.files.back();
    if (extensionOf(table) != ".lma")
        return Error{ErrorKind::InvalidValue,
                     "\"" + pathText(table) + "\" does not end in .lma. Name the table to write last."};
    ProgramState state;
    for (const std::filesystem::path& file : std::span(request.files).first(request.files.size() - 1)) {
        if (auto read = readTrialFile(file, state); !read) return read;
        const auto added =
            AddOverlay(state.overlays, state.TrialName, state.trials.CurrentSettings, state.trials.CurrentTrial);
        if (!added) return Error{added.error().kind, pathText(file) + ": " + added.error().text};
    }
    return WriteOverlayLma(table, state);
}

} // namespace tavex2
