#pragma once

#include "app/cli/CommandLine.h"

#include <filesystem>
#include <functional>

namespace tavex2 {

struct PlotRequest {
    std::filesystem::path file;
    std::filesystem::path picture;
    int widthPixels = 1000;
    int heightPixels = 600;
};

/// The picture of a trial, in the usual size.
TrialPicture pictureOf(const Trial& trial, const std::string& title, const std::filesystem::path& path);

/// Draws a trial file into a picture.
Result<void> plotFile(const PlotRequest& request, const std::function<Result<void>(const TrialPicture&)>& drawPicture);

} // namespace tavex2
