#pragma once

#include "acquisition/records/TrialBuffers.h"
#include "base/Result.h"

#include <QString>
#include <QStringList>

#include <filesystem>

namespace tavex2 {

/// Draws a trial with its full extent into a PNG, PDF or SVG file, by its extension, as a graph on paper: title above,
/// time and voltage axes, and for more than one channel a legend at the right. Shows no window, but needs the
/// QApplication. `settings` is how the trial was taken; `channelLabels` names the channels in their order, missing or
/// empty names become "Channel 0" and so on. An existing file is replaced only when the picture is complete. Errors:
/// InvalidValue for a size outside 200 x 150 .. 10000 x 10000 pixels, another extension, a trial without samples or
/// without a rate; those of AtomicFile.
Result<void> renderTrial(const TrialData& trial, const SamplingSettings& settings, const QString& title,
                         const QStringList& channelLabels, const std::filesystem::path& path, int width, int height);

} // namespace tavex2
