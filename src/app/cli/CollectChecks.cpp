#include "app/cli/CollectChecks.h"

#include "acquisition/records/LmbHeader.h"
#include "base/Decimal.h"
#include "base/PathText.h"
#include "platform/AtomicFile.h"
#include "platform/ChannelList.h"

#include <system_error>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

/// What the files will need on the disk; 0 when the channel list says nothing sensible, which the board will refuse.
std::uintmax_t bytesOf(const PlannedFiles& planned) {
    const SamplingSettings& sampling = planned.settings.sampling;
    const Result<std::vector<int>> channels = parseChannelList(sampling.Channels.trimmed(), mostChannels);
    if (!channels) return 0;
    std::uintmax_t bytes = 0;
    for (const TrialFormat* format : planned.formats)
        bytes += format->mostBytes(static_cast<int>(channels.value().size()), samplesPerTrial(sampling));
    return bytes * static_cast<std::uintmax_t>(planned.trials) * static_cast<std::uintmax_t>(sampling.Repeat);
}

Result<void> checkName(const PlannedFiles& planned) {
    constexpr std::size_t mostBytes = 255; // of a name on all usual disks
    const int last = planned.settings.setup.TrialNumber + planned.trials;
    // The longest of a run: its last repeat, broken off, the name taken already.
    const std::string name = planned.settings.setup.FilePrefix + zeroPadded(last, 4) + "-r" +
                             std::to_string(planned.settings.sampling.Repeat) + "-partial (9999).lmb";
    if (name.size() <= mostBytes) return {};
    return Error{ErrorKind::InvalidValue, "The trials' names would be up to " + std::to_string(name.size()) +
                                              " bytes long and can have " + std::to_string(mostBytes) +
                                              ". Shorten FilePrefix."};
}

} // namespace

Result<void> checkPlace(const PlannedFiles& planned) {
    std::error_code problem;
    const std::string name = "The output folder " + pathText(planned.folder);
    if (!fs::exists(planned.folder, problem))
        return Error{ErrorKind::NotFound, name + " does not exist. Create it or choose another one."};
    if (!fs::is_directory(planned.folder, problem))
        return Error{ErrorKind::InvalidValue, name + " is not a folder. Choose another one."};
    if (auto fits = checkName(planned); !fits) return fits;
    removeAbandonedFiles(planned.folder);
    const std::uintmax_t needed = bytesOf(planned);
    const std::uintmax_t available = fs::space(planned.folder, problem).available;
    if (!problem && available < needed)
        return Error{ErrorKind::WriteFailed, name + " has room for " + std::to_string(available / 1024) +
                                                 " KiB but the trials need " + std::to_string(needed / 1024 + 1) +
                                                 " KiB. Make room or choose another one."};
    if (!checkWritable(planned.folder))
        return Error{ErrorKind::WriteFailed,
                     name + " cannot be written to. Choose another one or change its permissions."};
    return {};
}

} // namespace tavex2
