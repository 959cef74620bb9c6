#pragma once

#include "base/TrialArray.h"
#include "platform/DaqStatus.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace tavex2 {

/// When delivery starts.
struct StartCondition {
    enum class Type { None, AnalogLevel };

    Type type = Type::None;
    double levelVolts = 0;
    double secondThresholdVolts = 0;  ///< its distance from the level is the hysteresis band
    std::string channel;              ///< trigger source: a listed channel, as text
    std::int64_t preTriggerScans = 0; ///< scans kept before the crossing
    bool rising = true;
};

/// When delivery ends.
enum class EndCondition { AfterTotalScans, Continuous };

/// What the analog-input control is told before it is configured.
struct AnalogInputConfig {
    std::string channelList; ///< channel specification, trimmed
    double scanRateHz = 0;
    std::int64_t totalScans = 0; ///< scans of one start, all repeats together
    double upperVolts = 10;
    double lowerVolts = -10;
    bool chunked = false;        ///< deliver in chunks instead of once at the end
    std::int64_t chunkScans = 0; ///< scans of one chunk
    StartCondition start;        ///< kept from one configuration to the next until it is set again
    EndCondition end = EndCondition::AfterTotalScans;
};

/// One delivered block.
struct AnalogBlock {
    std::shared_ptr<const TrialArray> samples; ///< rank 1 for one channel, else rank 2; float64 volts
    int index = 0;                             ///< 0-based number of the block within its start
    bool last = false;                         ///< nothing follows it
    std::int64_t firstScan = 0;                ///< number of its first scan since the board was started
};

/// How far a running collection is.
struct AnalogProgress {
    std::int64_t count = 0;        ///< repeat in progress (1-based) x total scans
    std::int64_t totalScans = 0;   ///< as configured
    std::int64_t scansInBlock = 0; ///< scans of the block in progress that have arrived
    std::int64_t blockScans = 0;   ///< scans that the block will have
    bool waitingForTrigger = false;
};

/// A run that ended early.
struct AnalogError {
    int code = 0;
    std::string context;                       ///< where it happened
    std::shared_ptr<const TrialArray> arrived; ///< the scans of the unfinished block; empty when there are none
    std::int64_t firstScan = 0;                ///< number of their first one since the board was started
};

/// The analog-input control. All calls are made, and all events arrive, on the user-interface thread; the board runs on
/// a thread of its own. Events of a run that was stopped never arrive.
class CWAI {
  public:
    virtual ~CWAI() = default;

    /// Selects a board by its device number (1..10). A number without a board is allowed and selects none.
    virtual void selectDevice(int number) = 0;
    virtual int device() const = 0;

    /// "Device: none" when the number names no board, else "Device: " and the board's name.
    virtual std::string deviceDescription() const = 0;

    /// What the next Configure() applies.
    AnalogInputConfig config;

    /// Applies `config`; the code of a refusal is one of DaqStatus. Must not be called while running.
    virtual int Configure() = 0;

    /// Why Configure() would refuse this configuration, in a sentence or two; empty when it would not. Changes nothing.
    virtual std::string refusalOf(const AnalogInputConfig& asked) const = 0;

    /// Starts delivering what was configured.
    virtual int Start() = 0;

    /// Stops a running collection; what has arrived of the unfinished block is dropped.
    virtual void Stop() = 0;

    virtual bool running() const = 0;

    /// As configured: channels of the list, scans of one start.
    virtual int numChannels() const = 0;
    virtual std::int64_t totalScans() const = 0;

    /// The description of a code, with what the last failure said about its cause.
    virtual std::string describe(int code) const = 0;

    std::function<void(AnalogBlock)> onData;
    std::function<void(AnalogProgress)> onProgress;
    std::function<void(AnalogError)> onError;
};

} // namespace tavex2
