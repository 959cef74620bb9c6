#pragma once

#include "base/Bool16.h"
#include "base/FixedText.h"

#include <array>
#include <cstdint>
#include <string>

namespace tavex2 {

// The four groups and the order of the fields inside each are those of the setup file, which stores each group as one
// block. The records do not check their values; ranges are listed in AcqFields.

/// What is done around a trial: naming, saving, display, delay.
struct SetupOptions {
    std::int16_t Version = 1;         ///< layout version of the setup file; always 1
    Bool16 SaveOffsets;               ///< record each channel's offset before collection starts
    Bool16 PauseToReset;              ///< before collection, ask the user to reset the channels
    Bool16 Autosave;                  ///< save every trial automatically after collection
    std::int16_t SaveType = 0;        ///< autosave format: 0 = binary trial file, 1 = tab-delimited file
    Bool16 DisplayAutoScale = true;   ///< graphs follow the data
    std::int16_t DisplayPreset = 0;   ///< preset voltage range, index of the scale dialog's options
    Bool16 DisplayInVolts = true;     ///< volts axis, else millivolts
    Bool16 DisplayInSeconds = true;   ///< seconds axis, else milliseconds
    Bool16 StartMaximized;            ///< main window starts maximised
    Bool16 Comments;                  ///< ask for comments for each trial
    std::int16_t Device = 1;          ///< number of the A/D device
    std::int16_t StartDelay = 0;      ///< seconds to wait before triggering starts
    std::int16_t TriggerMode = 0;     ///< 0 = immediate start, 1 = start on the trigger channel
    std::int16_t TrialNumber = 0;     ///< number of the last trial, used in file names
    std::string FilePrefix = "Trial"; ///< prefix of automatic file names

    friend bool operator==(const SetupOptions&, const SetupOptions&) = default;
};

/// How a trial is sampled.
struct SamplingSettings {
    std::uint8_t DIOMask = 1; ///< bit i (0..2) set = digital output line i gives a stimulus pulse
    std::array<std::int16_t, 8> DIOLatency{5, 5, 5, 5, 5, 5, 5, 5}; ///< delay of each line's pulse, ms
    std::array<std::int16_t, 8> DIOState{1, 1, 1, 1, 1, 1, 1, 1};   ///< level of each line's pulse
    FixedText<50> Channels{"0:1"};                                  ///< channel list
    std::int32_t Rate = 1000;                                       ///< samples per second per channel, Hz
    float Duration = 2.0F;                                          ///< trial length, s
    float UpperVolts = 10.0F;                                       ///< highest expected input, V
    float LowerVolts = -10.0F;                                      ///< lowest expected input, V
    std::int16_t NumChannels = 0;                                   ///< channels of the trial last configured or opened
    std::int32_t NumSamples = 0; ///< samples per channel of the trial in the current-trial buffer
    std::int16_t Repeat = 1;     ///< trials collected per start

    friend bool operator==(const SamplingSettings&, const SamplingSettings&) = default;
};

/// When a trial starts.
struct TriggerSettings {
    float TriggerLevel = 1.0F;        ///< V
    Bool16 TriggerRising = true;      ///< rising slope, else falling
    std::int16_t Pretrigger = 10;     ///< percentage of the trial's duration kept before the trigger
    std::string TriggerChannel = "0"; ///< a listed channel, as text of its number
    Bool16 RandomSound;               ///< kept in the setup file, read by nothing
    std::int16_t RandomRatio = 0;     ///< N of the random tone after a trial: played one time in N

    friend bool operator==(const TriggerSettings&, const TriggerSettings&) = default;
};

/// The tone. All five fields stay zero on a machine without a wave output device.
struct SoundSettings {
    Bool16 SoundBefore;       ///< play the tone before collection
    Bool16 SoundAvailable;    ///< the system has a wave output device
    double SoundFreq = 0;     ///< Hz
    double SoundDuration = 0; ///< s
    Bool16 SoundAfter;        ///< play the tone after collection

    friend bool operator==(const SoundSettings&, const SoundSettings&) = default;
};

/// Every choice that governs a collection. One instance lives in ProgramState; the initial values are the defaults.
struct AcqSettings {
    SetupOptions setup;
    SamplingSettings sampling;
    TriggerSettings trigger;
    SoundSettings sound;

    friend bool operator==(const AcqSettings&, const AcqSettings&) = default;
};

/// Samples per channel of one trial: Duration x Rate rounded (halves to even) plus one, because both the sample at
/// time 0 and the one at time Duration are taken. The record does not check its values: 0 when the product is
/// negative, not a number or beyond 2^53.
std::int64_t samplesPerTrial(const SamplingSettings& sampling);

/// Scans kept before the trigger: Pretrigger / 100 x Rate x Duration, rounded (halves to even).
std::int64_t preTriggerScans(const SamplingSettings& sampling, const TriggerSettings& trigger);

/// True when two trials may be averaged or overlaid: equal duration (compared exactly), channel count, sample count and
/// rate. The channel list, the limits and the stimuli may differ.
bool SettingsCompatible(const SamplingSettings& a, const SamplingSettings& b);

} // namespace tavex2
