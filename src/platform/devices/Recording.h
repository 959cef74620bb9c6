#pragma once

#include "platform/Board.h"
#include "platform/devices/Pacing.h"
#include "platform/devices/RecordedSignal.h"

#include <memory>
#include <vector>

namespace tavex2 {

/// Plays a recorded signal as if it came from a board, so that anyone can try the program on real signals. Channel k of
/// the recording is input k. It begins at its first scan at each start and begins again when it ends.
class Recording final : public Board {
  public:
    Recording(std::unique_ptr<RecordedSignal> signal, std::string spec, MillisecondClock& clock);

    const BoardDescription& description() const override { return m_description; }
    DaqOutcome check(const StreamConfig& config) const override;
    DaqOutcome start(const StreamConfig& config) override;
    BoardRead read(std::span<double> interleaved) override;
    void stop() override { m_pacing.end(); }
    void writeDigital(std::uint8_t) override {}

  private:
    std::unique_ptr<RecordedSignal> m_signal;
    BoardDescription m_description;
    Pacing m_pacing;
    std::vector<int> m_channels;
    std::vector<double> m_piece; ///< scans of the recording, all its channels
    std::int64_t m_nextScan = 0; ///< of the stream, which may have gone through the recording several times
};

} // namespace tavex2
