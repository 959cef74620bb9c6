#include "app/cli/PlotCommand.h"

#include "app/cli/TrialFile.h"
#include "base/PathText.h"
#include "base/Windows1252.h"

namespace tavex2 {

TrialPicture pictureOf(const Trial& trial, const std::string& title, const std::filesystem::path& path) {
    TrialPicture picture;
    picture.trial = trial.samples;
    for (int channel = 0; channel < picture.trial->channels(); ++channel)
        picture.labels.push_back(utf8FromWindows1252(labelOf(trial.header, channel)));
    picture.rateHz = trial.sampling.Rate;
    picture.title = title;
    picture.path = path;
    return picture;
}

Result<void> plotFile(const PlotRequest& request, const std::function<Result<void>(const TrialPicture&)>& drawPicture) {
    const Result<TrialPtr> read = readTrialFile(request.file);
    if (!read) return read.error();
    TrialPicture picture = pictureOf(*read.value(), pathText(request.file.filename()), request.picture);
    picture.widthPixels = request.widthPixels;
    picture.heightPixels = request.heightPixels;
    return drawPicture(picture);
}

} // namespace tavex2
