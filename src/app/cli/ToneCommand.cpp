#include "app/cli/ToneCommand.h"

#include "acquisition/Sound.h"
#include "platform/AtomicFile.h"

#include <span>

namespace tavex2 {

Result<void> writeToneFile(const ToneRequest& request) {
    Result<AtomicFile> file = AtomicFile::create(request.file);
    if (!file) return file.error();
    const std::string bytes = toneBytes(request.frequencyHz, request.durationSeconds);
    if (auto written = file.value().write(std::as_bytes(std::span(bytes))); !written) return written;
    return file.value().commit();
}

} // namespace tavex2
