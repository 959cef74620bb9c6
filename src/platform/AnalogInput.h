#pragma once

#include "platform/AcquisitionLoop.h"
#include "platform/Board.h"
#include "platform/BoardList.h"
#include "platform/CWAI.h"
#include "platform/EventLoop.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace tavex2 {

/// The analog-input control over the boards of a list: checks what it is told, runs the selected board on an
/// acquisition thread, and posts finished blocks, progress and errors to the user-interface thread.
///
/// Every posted event carries the number of its run; Stop() and Start() make those of earlier runs void, so nothing of
/// a stopped run arrives. The control outlives every event: destroy it on the user-interface thread.
class AnalogInput final : public CWAI {
  public:
    /// `boards` and `events` outlive the control.
    AnalogInput(const BoardList& boards, EventLoop& events);
    ~AnalogInput() override;
    AnalogInput(const AnalogInput&) = delete;
    AnalogInput& operator=(const AnalogInput&) = delete;

    void selectDevice(int number) override;
    int device() const override { return m_device; }
    std::string deviceDescription() const override;

    /// The selected board; null when there is none.
    Board* board() const { return m_boards.find(m_device); }

    int Configure() override;
    int Start() override;
    void Stop() override;
    bool running() const override { return m_running; }
    int numChannels() const override { return static_cast<int>(m_stream.channels.size()); }
    std::int64_t totalScans() const override { return m_applied ? m_applied->totalScans : config.totalScans; }
    std::string describe(int code) const override;
    std::string refusalOf(const AnalogInputConfig& asked) const override;

  private:
    struct Link; ///< what posted events hold on to instead of the control itself

    int refuse(DaqStatus status, std::string detail);
    DaqOutcome check(const AnalogInputConfig& asked, StreamConfig& stream) const;
    DaqOutcome prepare(Board& selected, std::function<void(std::stop_token)>& acquisition);
    std::optional<LevelTrigger> levelTrigger() const;
    AcquisitionEvents eventsOfNextRun();
    AcquisitionEvents eventsOfNextView();

    const BoardList& m_boards;
    EventLoop& m_events;
    int m_device = 1;
    StreamConfig m_stream;
    std::optional<AnalogInputConfig> m_applied; ///< what Configure() accepted last
    int m_failedCode = 0;
    std::string m_failedDetail;
    bool m_running = false;
    std::shared_ptr<Link> m_link;
    std::jthread m_thread;
};

} // namespace tavex2
