#include "files/Import.h"
#include "files/ReplaceTrial.h"

#include <cstdint>
#include <sstream>
#include <utility>

using namespace tavex2;

/// Reads any bytes as a trial file, with an identification and without; what is read can become the current trial.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const LmbStart start : {LmbStart::Identification, LmbStart::Header}) {
        std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
        Result<LmbFile> read = readLmb(in, size, "wild.lmb", {}, start);
        if (!read) continue;
        ProgramState state;
        enterTrialOfFile(state, trialOf(std::move(read).value(), "/wild.lmb", state.settings.sampling), "/");
        if (!hasCurrentTrial(state)) __builtin_trap();
    }
    return 0;
}
