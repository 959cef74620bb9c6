#include "files/ReplaceTrial.h"
#include "files/StimulusFile.h"

#include <cstdint>
#include <sstream>
#include <utility>

using namespace tavex2;

/// Reads any bytes as a stimulus file; what is read can become the current trial.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    Result<StimulusFile> read = readPlv(in, size, "wild.plv");
    if (!read) return 0;
    ProgramState state;
    enterTrialOfFile(state, trialOf(std::move(read).value(), "/wild.plv"), "/");
    if (!hasCurrentTrial(state)) __builtin_trap();
    return 0;
}
