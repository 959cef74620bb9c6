#include "app/cli/ConvertCommand.h"

#include "app/cli/TrialFile.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/FileIO.h"
#include "files/StimulusFile.h"
#include "files/TextExport.h"

namespace tavex2 {

Result<void> convertFile(const ConvertRequest& request) {
    ProgramState state;
    if (auto read = readTrialFile(request.from, state); !read) return read;
    const std::string kind = extensionOf(request.to);
    if (kind == ".lmb") return WriteLmb(request.to, state, localTimeNow());
    if (kind == ".tab") return WriteTab(request.to, state);
    if (kind == ".lma") return WriteLma(request.to, state);
    if (kind == ".plv") return WritePlv(request.to, state);
    return Error{ErrorKind::InvalidValue,
                 "\"" + pathText(request.to) + "\" does not end in .lmb, .tab, .lma or .plv. Choose one of these."};
}

} // namespace tavex2
