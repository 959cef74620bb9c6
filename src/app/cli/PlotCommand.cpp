#include "app/cli/PlotCommand.h"

#include "app/cli/TrialFile.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "base/Windows1252.h"

namespace tavex2 {

Result<void> plotFile(const PlotRequest& request, const CommandLineServices& services) {
    const std::string kind = extensionOf(request.picture);
    if (kind != ".png" && kind != ".pdf" && kind != ".svg")
        return Error{ErrorKind::WrongUsage,
                     "\"" + pathText(request.picture) + "\" does not end in .png, .pdf or .svg. Choose one of these."};
    ProgramState state;
    if (auto read = readTrialFile(request.file, state, services.err); !read) return read;
    const SamplingSettings& taken = state.trials.CurrentSettings;
    if (taken.Rate < 1)
        return Error{ErrorKind::InvalidValue,
                     pathText(request.file) + " has no sampling rate, so there is no time to draw it over."};

    TrialPicture picture;
    picture.trial = state.trials.CurrentTrial;
    for (int channel = 0; channel < picture.trial->channels(); ++channel)
        picture.labels.push_back(utf8FromWindows1252(labelOf(state.header, channel)));
    picture.rateHz = taken.Rate;
    picture.title = pathText(request.file.filename());
    picture.path = request.picture;
    picture.widthPixels = request.widthPixels;
    picture.heightPixels = request.heightPixels;
    return services.drawPicture(picture);
}

} // namespace tavex2
