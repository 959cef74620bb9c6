#include "app/cli/ConvertCommand.h"

#include "base/PathText.h"
#include "files/FileIO.h"
#include "files/Import.h"
#include "files/OpenCommands.h"
#include "files/StimulusCommands.h"
#include "files/StimulusFile.h"
#include "files/TextExport.h"

#include <utility>

namespace tavex2 {

namespace {

/// Makes the trial of a file the current one of `state`.
Result<void> readTrial(const std::filesystem::path& path, ProgramState& state) {
    if (path.extension() == ".plv") {
        Result<StimulusFile> read = readPlvFile(path);
        if (!read) return read.error();
        enterImportedTrial(state, std::move(read).value(), path);
        return {};
    }
    Result<LmbFile> read = readLmbFile(path);
    if (!read) return read.error();
    enterOpenedTrial(state, std::move(read).value(), path);
    return {};
}

} // namespace

Result<void> convertFile(const ConvertRequest& request) {
    ProgramState state;
    if (auto read = readTrial(request.from, state); !read) return read;
    const std::string kind = request.to.extension().string();
    if (kind == ".lmb") return WriteLmb(request.to, state, localTimeNow());
    if (kind == ".tab") return WriteTab(request.to, state);
    if (kind == ".lma") return WriteLma(request.to, state);
    if (kind == ".plv") return WritePlv(request.to, state);
    return Error{ErrorKind::InvalidValue,
                 "\"" + pathText(request.to) + "\" does not end in .lmb, .tab, .lma or .plv. Choose one of these."};
}

} // namespace tavex2
