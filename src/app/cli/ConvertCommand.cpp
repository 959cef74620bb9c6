#include "app/cli/ConvertCommand.h"

#include "base/PathText.h"
#include "files/FileIO.h"
#include "files/Import.h"
#include "files/OpenCommands.h"
#include "files/TextExport.h"

#include <utility>

namespace tavex2 {

Result<void> convertFile(const ConvertRequest& request) {
    Result<LmbFile> read = readLmbFile(request.from);
    if (!read) return read.error();
    ProgramState state;
    enterOpenedTrial(state, std::move(read).value(), request.from);
    const std::string kind = request.to.extension().string();
    if (kind == ".lmb") return WriteLmb(request.to, state, localTimeNow());
    if (kind == ".tab") return WriteTab(request.to, state);
    if (kind == ".lma") return WriteLma(request.to, state);
    return Error{ErrorKind::InvalidValue, "\"" + pathText(request.to) +
                                              "\" has an extension that is none of .lmb, .tab and "
                                              ".lma. Choose one of these."};
}

} // namespace tavex2
