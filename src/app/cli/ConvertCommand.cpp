#include "app/cli/ConvertCommand.h"

#include "app/cli/TrialFile.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/FileIO.h"
#include "files/StimulusFile.h"
#include "files/TextExport.h"

namespace tavex2 {

namespace {

/// A converted trial keeps its own number and time.
std::string titleOf(const Trial& trial) {
    const std::string title = trial.header.Title.trimmed();
    return title.empty() ? lmbTitle(trial.number, localTimeNow()) : title;
}

} // namespace

Result<void> convertFile(const ConvertRequest& request) {
    const Result<TrialPtr> read = readTrialFile(request.from);
    if (!read) return read.error();
    const Trial& trial = *read.value();
    const std::string kind = extensionOf(request.to);
    if (kind == ".lmb") {
        const auto written = WriteLmb(request.to, trial, titleOf(trial));
        return written ? Result<void>() : written.error();
    }
    if (kind == ".tab") return WriteTab(request.to, trial);
    if (kind == ".lma") return WriteLma(request.to, trial);
    if (kind == ".plv") return WritePlv(request.to, trial);
    return Error{ErrorKind::InvalidValue,
                 "\"" + pathText(request.to) + "\" does not end in .lmb, .tab, .lma or .plv. Choose one of these."};
}

} // namespace tavex2
