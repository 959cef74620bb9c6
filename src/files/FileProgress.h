#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace tavex2 {

/// Called between pieces of long work on a file, with how much of it is done; returns whether to go on. May be empty.
using FileProgress = std::function<bool(int done, int of)>;

/// How many samples are read or written between two calls. 1 MiB in the file: measured, smaller writes cost up to half
/// as much again.
inline constexpr std::size_t samplesOfAPiece = std::size_t{256} * 1024;

/// Counts the samples of a file and tells a FileProgress in thousandths.
class SampleProgress {
  public:
    SampleProgress(const FileProgress& tell, std::int64_t samples) : m_tell(tell), m_samples(samples) {}

    /// More samples are done; False when the work is to end.
    bool advance(std::size_t samples) {
        constexpr int thousand = 1000;
        m_done += static_cast<std::int64_t>(samples);
        return !m_tell || m_tell(static_cast<int>(m_done * thousand / m_samples), thousand);
    }

  private:
    const FileProgress& m_tell;
    std::int64_t m_samples;
    std::int64_t m_done = 0;
};

} // namespace tavex2
