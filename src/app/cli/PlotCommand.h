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

/// The picture of a trial, in the usual size.
TrialPicture pictureOf(const Trial& trial, const std::string& title, const std::filesystem::path& path);

/// Whether a picture's name ends in .png, .pdf or .svg; else WrongUsage.
Result<void> checkPictureName(const std::filesystem::path& path);

/// Draws a trial file into a picture. Errors: that of the name, those of the readers, InvalidValue for a trial without
/// a rate, those of drawing.
Result<void> plotFile(const PlotRequest& request, const CommandLineServices& services);

} // namespace tavex2
