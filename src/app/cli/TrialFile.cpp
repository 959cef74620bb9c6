#include "app/cli/TrialFile.h"

#include "base/FileNames.h"
#include "files/Import.h"
#include "files/OpenCommands.h"
#include "files/StimulusCommands.h"
#include "files/StimulusFile.h"

#include <utility>

namespace tavex2 {

Result<void> readTrialFile(const std::filesystem::path& path, ProgramState& state) {
    if (extensionOf(path) == ".plv") {
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

} // namespace tavex2
