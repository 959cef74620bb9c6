#include "app/cli/PlotCommand.h"

#include "app/cli/TrialFile.h"
#include "base/Windows1252.h"

namespace tavex2 {

Result<void> plotFile(const PlotRequest& request, const std::function<Result<void>(const TrialPicture&)>& drawPicture) {
    ProgramState state;
    if (auto read = readTrialFile(request.file, state); !read) return read;

    TrialPicture picture;
    picture.trial = state.trials.CurrentTrial;
    for (int channel = 0; channel < picture.trial->channels(); ++channel)
        picture.labels.push_back(utf8FromWindows1252(labelOf(state.header, channel)));
    picture.rateHz = state.trials.CurrentSettings.Rate;
    picture.title = request.file.filename().string();
    picture.path = request.picture;
    picture.widthPixels = request.widthPixels;
    picture.heightPixels = request.heightPixels;
    return drawPicture(picture);
}

} // namespace tavex2
