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

Result<void> convertFile(const ConvertRequest& request, std::ostream& err) {
    constexpr std::array<std::string_view, 4> kinds{".lmb", ".tab", ".lma", ".plv"};
    const std::string kind = extensionOf(request.to);
    if (std::ranges::find(kinds, kind) == kinds.end())
        return Error{ErrorKind::WrongUsage,
                     "\"" + pathText(request.to) + "\" does not end in .lmb, .tab, .lma or .plv. Choose one of these."};

    ProgramState state;
    if (auto read = readTrialFile(request.from, state, err); !read) return read;
    WriteOptions options{.progress = untilInterrupted()};
    if (kind == ".tab") return WriteTab(request.to, state, options);
    if (kind == ".lma") return WriteLma(request.to, state, options);
    if (kind == ".plv") return WritePlv(request.to, state, options);
    // The trial was taken when it was taken.
    if (!state.header.Title.neverSet()) options.title = state.header.Title;
    return WriteLmb(request.to, state, localTimeNow(), options);
}

} // namespace tavex2
