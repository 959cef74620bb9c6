#pragma once

#include <string_view>

namespace tavex2 {

/// Status codes of the analog-input layer. 0 is success; the numbers are shown to the user and stay as they are.
enum class DaqStatus : int {
    Ok = 0,
    NoDevice = -10001,
    BadChannelList = -10002,
    BadRate = -10003,
    BadLimits = -10004,
    BadTrigger = -10005,
    BadScanCount = -10006,
    OutOfMemory = -10007,
    DeviceUnavailable = -10008,
    DeviceRefused = -10009,
    DeviceVanished = -10010,
    Overrun = -10011,
    NotConfigured = -10012,
    Busy = -10013,
};

/// The description of a code; for a number outside the table, a sentence that says so.
std::string_view daqStatusDescription(int code);

} // namespace tavex2
