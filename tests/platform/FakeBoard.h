#pragma once

#include "platform/Board.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

namespace tavex2::test {

/// A board that delivers what `sample` says, as fast as it is read, until `lastScan`; there it fails or waits.
class FakeBoard final : public Board {
  public:
    std::function<double(int input, std::int64_t scan)> sample = [](int input, std::int64_t scan) {
        return 0.001 * static_cast<double>(scan % 1000) + input;
    };
    std::int64_t lastScan = INT64_MAX;
    DaqStatus endsWith = DaqStatus::Ok; ///< Ok: waits for stop() like a board whose signal goes on later
    DaqOutcome checks, starts;
    std::atomic<std::int64_t> scansRead = 0;
    int stops = 0;
    BoardDescription descriptionGiven{.name = "Fake", .spec = "fake", .inputs = 16, .highestRateHz = 100000};

    const BoardDescription& description() const override { return descriptionGiven; }
    DaqOutcome check(const StreamConfig&) const override { return checks; }
    DaqOutcome start(const StreamConfig& config) override {
        m_channels = config.channels;
        m_stopped = false;
        scansRead = 0;
        return starts;
    }
    BoardRead read(std::span<double> interleaved) override {
        const auto asked = static_cast<std::int64_t>(interleaved.size() / m_channels.size());
        const std::int64_t scans = std::clamp<std::int64_t>(lastScan - scansRead, 0, asked);
        for (std::size_t i = 0; i < static_cast<std::size_t>(scans) * m_channels.size(); ++i)
            interleaved[i] =
                sample(m_channels[i % m_channels.size()], scansRead + static_cast<std::int64_t>(i / m_channels.size()));
        scansRead += scans;
        if (scans < asked && endsWith == DaqStatus::Ok) {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return m_stopped; });
        }
        return {scans, scans < asked ? endsWith : DaqStatus::Ok, scans < asked ? "Fake board" : ""};
    }
    void stop() override {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
        ++stops;
        m_changed.notify_all();
    }
    void writeDigital(std::uint8_t) override {}

  private:
    std::vector<int> m_channels;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_stopped = false;
};

} // namespace tavex2::test
