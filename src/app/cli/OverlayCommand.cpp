#include "app/cli/OverlayCommand.h"

#include "analysis/Overlays.h"
#include "app/cli/TrialFile.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/TextExport.h"

#include <span>

namespace tavex2 {

Result<void> overlayFiles(const OverlayRequest& request, std::ostream& err) {
    const std::filesystem::path& table = request.files.back();
    if (extensionOf(table) != ".lma")
        return Error{ErrorKind::WrongUsage,
                     "\"" + pathText(table) + "\" does not end in .lma. Name the table to write last."};
    const auto trials = std::span(request.files).first(request.files.size() - 1);
    ProgramState state;
    if (const std::size_t most = state.overlays.OverlayData.size(); trials.size() > most)
        return Error{ErrorKind::WrongUsage, "At most " + std::to_string(most) + " trials can be overlaid, not " +
                                                std::to_string(trials.size()) + "."};
    for (const std::filesystem::path& file : trials) {
        if (auto read = readTrialFile(file, state, err); !read) return read;
        const auto added =
            AddOverlay(state.overlays, state.TrialName, state.trials.CurrentSettings, state.trials.CurrentTrial);
        if (!added) return Error{added.error().kind, pathText(file) + ": " + added.error().text};
    }
    return WriteOverlayLma(table, state, {.progress = untilInterrupted()});
}

} // namespace tavex2
