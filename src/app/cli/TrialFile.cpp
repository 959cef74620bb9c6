#include "app/cli/TrialFile.h"

#include "app/cli/ConsoleRun.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "files/ReplaceTrial.h"
#include "files/StimulusFile.h"
#include "platform/Interruption.h"

#include <utility>

namespace tavex2 {

FileProgress untilInterrupted() {
    return [](int, int) { return !Interruption::requested(); };
}

Result<LmbFile> readLmbOfAnyKind(const std::filesystem::path& path, std::ostream& err) {
    Result<LmbFile> read = readLmbOfAnyKind(path, untilInterrupted());
    if (read && !read.value().identified)
        err << "tavex2: " << oneLine(pathText(path))
            << ": File format was not a Lumidor2 binary file (.LMB) or file is corrupt. It was read from its first "
               "byte.\n";
    return read;
}

Result<TrialPtr> readTrialFile(const std::filesystem::path& path, std::ostream& err) {
    const std::filesystem::path file = wholePath(path);
    if (extensionOf(path) == ".plv") {
        Result<StimulusFile> read = readPlvFile(path, untilInterrupted());
        if (!read) return read.error();
        return TrialPtr(trialOf(std::move(read).value(), file));
    }
    Result<LmbFile> read = readLmbOfAnyKind(path, err);
    if (!read) return read.error();
    return TrialPtr(trialOf(std::move(read).value(), file, SamplingSettings{}));
}

} // namespace tavex2
