#include "app/cli/ConvertCommand.h"

#include "app/cli/TrialFile.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/FileIO.h"
#include "files/StimulusFile.h"
#include "files/TextExport.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tavex2 {

namespace {

/// The trial was taken when it was taken, whatever its file is made into.
std::string titleOf(const Trial& trial) {
    const std::string title = trial.header.Title.trimmed();
    return title.empty() ? lmbTitle(trial.number, localTimeNow()) : title;
}

} // namespace

Result<void> convertFile(const ConvertRequest& request, std::ostream& err) {
    constexpr std::array<std::string_view, 4> kinds{".lmb", ".tab", ".lma", ".plv"};
    const std::string kind = extensionOf(request.to);
    if (std::ranges::find(kinds, kind) == kinds.end())
        return Error{ErrorKind::WrongUsage,
                     "\"" + pathText(request.to) + "\" does not end in .lmb, .tab, .lma or .plv. Choose one of these."};

    const Result<TrialPtr> read = readTrialFile(request.from, err);
    if (!read) return read.error();
    const Trial& trial = *read.value();
    const WriteOptions options{.progress = untilInterrupted()};
    if (kind == ".tab") return WriteTab(request.to, trial, options);
    if (kind == ".lma") return WriteLma(request.to, trial, options);
    if (kind == ".plv") return WritePlv(request.to, trial, options);
    const auto written = WriteLmb(request.to, trial, titleOf(trial), options);
    return written ? Result<void>() : written.error();
}

} // namespace tavex2
