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
    OverlaySet overlays;
    TrialPtr last;
    for (const std::filesystem::path& file : std::span(request.files).first(request.files.size() - 1)) {
        const Result<TrialPtr> read = readTrialFile(file);
        if (!read) return read.error();
        last = read.value();
        if (const auto added = AddOverlay(overlays, last); !added)
            return Error{added.error().kind, pathText(file) + ": " + added.error().text};
    }
    return WriteOverlayLma(table, overlays, last->sampling, last->name);
}

} // namespace tavex2
