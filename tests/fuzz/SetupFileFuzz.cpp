#include "acquisition/AcqFields.h"
#include "acquisition/SetupFile.h"
#include "acquisition/StartCondition.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>

using namespace tavex2;

/// Reads any bytes as a setup file. Whatever the settings are then, they can be looked at, and a file that is read is
/// written again byte by byte.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::istringstream in(bytes);
    AcqSettings settings;
    const Result<void> read = decodeSetup(in, settings);

    for (const bool triggered : {false, true}) {
        (void)checkCollectable(settings, triggered);
        (void)configurationFor(settings, startConditionFor(settings, triggered));
    }
    if (read && !bytes.starts_with(encodeSetup(settings))) std::abort();
    return 0;
}
