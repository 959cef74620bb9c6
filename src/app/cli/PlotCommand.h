#pragma once

#include "app/cli/CommandLine.h"

#include <filesystem>

namespace tavex2 {

struct PlotRequest {
    std::filesystem::path file;
    std::filesystem::path picture;
    int widthPixels = 1000;
    int heightPixels = 600;
};

/// Draws a trial file into a picture, a .png, .pdf or .svg file. Errors: WrongUsage for another extension, those of the
/// readers, InvalidValue for a trial without a rate, those of drawing.
Result<void> plotFile(const PlotRequest& request, const CommandLineServices& services);

} // namespace tavex2
