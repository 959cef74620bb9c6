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
    const auto files = std::span(request.files).first(request.files.size() - 1);
    OverlaySet overlays;
    if (const std::size_t most = overlays.OverlayData.size(); files.size() > most)
        return Error{ErrorKind::WrongUsage, "At most " + std::to_string(most) + " trials can be overlaid, not " +
                                                std::to_string(files.size()) + "."};
    TrialPtr last;
    for (const std::filesystem::path& file : files) {
        const Result<TrialPtr> read = readTrialFile(file, err);
        if (!read) return read.error();
        last = read.value();
        if (const auto added = AddOverlay(overlays, last); !added)
            return Error{added.error().kind, pathText(file) + ": " + added.error().text};
    }
    return WriteOverlayLma(table, overlays, last->sampling, last->name, {.progress = untilInterrupted()});
}

} // namespace tavex2
