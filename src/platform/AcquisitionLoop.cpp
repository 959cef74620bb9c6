#include "platform/AcquisitionLoop.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

namespace tavex2 {

namespace {

using WallClock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds progressInterval{50};
constexpr std::chrono::microseconds latestInterval{33'334}; // 30 a second

/// Reads in pieces of about 10 ms, so that a stop, a trigger or an error is noticed soon.
std::int64_t scansOfOneRead(double rateHz) {
    return std::clamp<std::int64_t>(static_cast<std::int64_t>(rateHz / 100.0), 1, 4096);
}

/// True at most once an interval, and less often when the work that is then done takes long.
class Throttle {
  public:
    explicit Throttle(WallClock::duration interval) : m_interval(interval) {}
    bool due() {
        const auto now = WallClock::now();
        if (now < m_next) return false;
        m_began = now;
        m_next = now + m_interval;
        return true;
    }

    /// The work of this turn is done: it may take up a fifth of the time, or scans would wait for it.
    void done() {
        const auto now = WallClock::now();
        m_next = std::max(m_next, now + 4 * (now - m_began));
    }

  private:
    WallClock::duration m_interval;
    WallClock::time_point m_began{};
    WallClock::time_point m_next{};
};

/// Reads the next scans of a board into a buffer of its own.
class Reader {
  public:
    Reader(Board& board, const StreamConfig& stream)
        : m_board(board), m_channels(stream.channels.size()), m_scans(scansOfOneRead(stream.rateHz)),
          m_buffer(m_channels * static_cast<std::size_t>(m_scans)) {}

    /// Blocks for at most `most` scans. A board that gives fewer than asked for without a reason has vanished.
    BoardRead read(std::int64_t most) {
        const std::int64_t asked = std::min(m_scans, most);
        BoardRead result = m_board.read(std::span(m_buffer).first(static_cast<std::size_t>(asked) * m_channels));
        m_arrived = std::span(m_buffer).first(static_cast<std::size_t>(result.scans) * m_channels);
        if (result.status == DaqStatus::Ok && result.scans < asked) result.status = DaqStatus::DeviceVanished;
        return result;
    }
    std::span<const double> arrived() const { return m_arrived; }

  private:
    Board& m_board;
    std::size_t m_channels;
    std::int64_t m_scans;
    std::vector<double> m_buffer;
    std::span<const double> m_arrived;
};

std::shared_ptr<const TrialArray> shared(TrialArray array) {
    return array.empty() ? nullptr : std::make_shared<const TrialArray>(std::move(array));
}

AnalogProgress progressOf(const ScanAssembler& assembler, const AnalogInputConfig& config) {
    return {.count = (assembler.blockIndex() + 1) * config.totalScans,
            .totalScans = config.totalScans,
            .scansInBlock = assembler.scansInBlock(),
            .blockScans = config.chunked ? config.chunkScans : config.totalScans,
            .waitingForTrigger = assembler.waitingForTrigger()};
}

/// Where in a collection something happened, e.g. "after scan 120 of 2001, repeat 2 of 3."
std::string position(const ScanAssembler& assembler, const AnalogInputConfig& config, const std::string& cause) {
    const AnalogProgress progress = progressOf(assembler, config);
    std::string text = cause.empty() ? "Acquisition" : cause;
    if (progress.waitingForTrigger) return text + ", while waiting for the trigger.";
    text += ", after scan " + std::to_string(progress.scansInBlock) + " of " + std::to_string(progress.blockScans);
    if (config.chunked)
        text += ", repeat " + std::to_string(assembler.blockIndex() + 1) + " of " +
                std::to_string(config.totalScans / config.chunkScans);
    return text + ".";
}

} // namespace

void acquireTrials(Board& board, ScanAssembler& assembler, const AnalogInputConfig& config, const StreamConfig& stream,
                   const AcquisitionEvents& events, const std::stop_token& stop) {
    Reader reader(board, stream);
    Throttle throttle(progressInterval);
    const int blocks = config.chunked ? static_cast<int>(config.totalScans / config.chunkScans) : 1;
    const auto deliver = [&](TrialArray block, int index) {
        events.data({shared(std::move(block)), index, index + 1 == blocks, assembler.firstScan()});
    };
    const auto fail = [&](DaqStatus status, const std::string& cause) {
        const std::string context = position(assembler, config, cause);
        events.error({static_cast<int>(status), context, shared(assembler.takeUnfinished()), assembler.firstScan()});
    };

    int repeat = -1;
    while (!assembler.done() && !stop.stop_requested()) {
        if (!assembler.waitingForTrigger() && std::exchange(repeat, assembler.blockIndex()) != assembler.blockIndex())
            events.progress(progressOf(assembler, config));
        const BoardRead read = reader.read(assembler.scansNeeded());
        const Result<void> added = assembler.add(reader.arrived(), deliver);
        if (stop.stop_requested() || assembler.done()) break;
        if (!added || read.status != DaqStatus::Ok) {
            fail(added ? read.status : DaqStatus::OutOfMemory, added ? read.context : added.error().text);
            break;
        }
        if (throttle.due()) events.progress(progressOf(assembler, config));
    }
    board.stop();
}

void acquireContinuously(Board& board, LatestWindow& window, const StreamConfig& stream,
                         const AcquisitionEvents& events, const std::stop_token& stop) {
    Reader reader(board, stream);
    Throttle throttle(latestInterval);
    constexpr std::int64_t noLimit = INT64_MAX;
    for (int index = 0; !stop.stop_requested();) {
        const BoardRead read = reader.read(noLimit);
        window.add(reader.arrived());
        if (stop.stop_requested()) break;
        if (read.status != DaqStatus::Ok) {
            events.error(
                {static_cast<int>(read.status), read.context.empty() ? "Continuous view." : read.context, {}, 0});
            break;
        }
        if (!throttle.due()) continue;
        if (Result<TrialArray> latest = window.latest())
            events.data({shared(std::move(latest).value()), index++, false, window.firstScan()});
        throttle.done();
    }
    board.stop();
}

} // namespace tavex2
