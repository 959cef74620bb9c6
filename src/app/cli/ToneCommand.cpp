#include "app/cli/ToneCommand.h"

#include "acquisition/Sound.h"

namespace tavex2 {

Result<void> writeToneFile(const ToneRequest& request) {
    return WriteTone(request.file, request.frequencyHz, request.durationSeconds, IfExists::Replace);
}

} // namespace tavex2
