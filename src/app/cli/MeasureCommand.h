#pragma once

#include "base/Result.h"

#include <filesystem>
#include <optional>
#include <ostream>

namespace tavex2 {

/// What `tavex2 measure` is asked for.
struct MeasureRequest {
    std::filesystem::path file;
    int channel = 0;
    std::optional<double> from; ///< s; the first sample without it
    std::optional<double> to;   ///< s; the last sample without it
    bool rectify = false;
    bool json = false;
};

/// Prints what the information window shows for the stretch between two times, which go to the samples inside them.
/// Errors: those of the readers, InvalidValue for a channel that is not there, times that are the wrong way round or
/// beside the data, and a trial that is too short.
Result<void> measureFile(const MeasureRequest& request, std::ostream& out, std::ostream& err);

} // namespace tavex2
