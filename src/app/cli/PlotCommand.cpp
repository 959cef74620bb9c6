#include "app/cli/PlotCommand.h"

#include "app/cli/TrialFile.h"
#include "base/FileNames.h"
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

Result<void> checkPictureName(const std::filesystem::path& path) {
    const std::string kind = extensionOf(path);
    if (kind == ".png" || kind == ".pdf" || kind == ".svg") return {};
    return Error{ErrorKind::WrongUsage,
                 "\"" + pathText(path) + "\" does not end in .png, .pdf or .svg. Choose one of these."};
}

Result<void> plotFile(const PlotRequest& request, const CommandLineServices& services) {
    if (auto named = checkPictureName(request.picture); !named) return named;
    const Result<TrialPtr> read = readTrialFile(request.file, services.err);
    if (!read) return read.error();
    if (read.value()->sampling.Rate < 1)
        return Error{ErrorKind::InvalidValue,
                     pathText(request.file) + " has no sampling rate, so there is no time to draw it over."};
    TrialPicture picture = pictureOf(*read.value(), pathText(request.file.filename()), request.picture);
    picture.widthPixels = request.widthPixels;
    picture.heightPixels = request.heightPixels;
    return services.drawPicture(picture);
}

} // namespace tavex2
