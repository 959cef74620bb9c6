#pragma once

#include "base/Result.h"

#include <cstdint>
#include <span>
#include <string>

namespace tavex2 {

/// A signal that was recorded earlier, whatever file it lies in. Used by one thread at a time.
class RecordedSignal {
  public:
    virtual ~RecordedSignal() = default;

    virtual std::string name() const = 0;
    virtual int channels() const = 0;
    virtual double rateHz() const = 0;
    virtual std::int64_t scans() const = 0; ///< at least 1

    /// Fills `interleaved` (whole scans, channel after channel, in volts) from scan `first` on; the caller stays inside
    /// the recording. Error ReadFailed when the file can no longer be read.
    virtual Result<void> read(std::int64_t first, std::span<double> interleaved) = 0;
};

} // namespace tavex2
