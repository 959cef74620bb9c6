#include "app/cli/ConvertCommand.h"

#include "app/cli/TrialFile.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/TrialFormats.h"

namespace tavex2 {

Result<void> convertFile(const ConvertRequest& request, std::ostream& err) {
    const TrialFormat* format = trialFormat(extensionOf(request.to));
    if (format == nullptr)
        return Error{ErrorKind::WrongUsage, "\"" + pathText(request.to) + "\" does not end in " + trialFormatNames() +
                                                ". Choose one of these."};
    const Result<TrialPtr> read = readTrialFile(request.from, err);
    if (!read) return read.error();
    return format->write(request.to, *read.value(), {.progress = untilInterrupted()});
}

} // namespace tavex2
