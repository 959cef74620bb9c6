#include "app/cli/PlotCommand.h"

#include "base/Windows1252.h"
#include "files/Import.h"

#include <utility>

namespace tavex2 {

Result<void> plotFile(const PlotRequest& request, const std::function<Result<void>(const TrialPicture&)>& drawPicture) {
    Result<LmbFile> read = readLmbFile(request.file);
    if (!read) return read.error();
    LmbFile file = std::move(read).value();

    TrialPicture picture;
    for (int channel = 1; channel <= file.header.NumChannels; ++channel)
        picture.labels.push_back(utf8FromWindows1252(file.header.Labels[static_cast<std::size_t>(channel)].trimmed()));
    picture.trial = std::make_shared<const TrialArray>(std::move(file.samples));
    picture.rateHz = file.header.Rate;
    picture.title = request.file.filename().string();
    picture.path = request.picture;
    picture.widthPixels = request.widthPixels;
    picture.heightPixels = request.heightPixels;
    return drawPicture(picture);
}

} // namespace tavex2
