#include "app/cli/TrialFile.h"

#include "base/FileNames.h"
#include "files/Import.h"
#include "files/ReplaceTrial.h"
#include "files/StimulusFile.h"

#include <utility>

namespace tavex2 {

Result<TrialPtr> readTrialFile(const std::filesystem::path& path) {
    const std::filesystem::path file = wholePath(path);
    if (extensionOf(path) == ".plv") {
        Result<StimulusFile> read = readPlvFile(path);
        if (!read) return read.error();
        return TrialPtr(trialOf(std::move(read).value(), file));
    }
    Result<LmbFile> read = readLmbFile(path);
    if (!read) return read.error();
    return TrialPtr(trialOf(std::move(read).value(), file, SamplingSettings{}));
}

} // namespace tavex2
