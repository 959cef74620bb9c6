#pragma once

#include "acquisition/records/TrialBuffers.h"

#include <filesystem>

namespace tavex2::bench {

/// A trial as electrodes might give it: on every channel a few sines, noise and now and then a spike of one sample,
/// within +-10 V. Two calls give the same samples.
TrialData madeUpTrial(ElementType type, int channels, std::int64_t samples);

/// A float64 trial of a recorded sound file's signals, each played again and again; channels beyond those of the file
/// start over with the first one, somewhere else in it. Throws std::runtime_error where the file cannot be read.
TrialData recordedTrial(const std::filesystem::path& file, int channels, std::int64_t samples);

} // namespace tavex2::bench
