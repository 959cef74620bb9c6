#include "platform/DaqStatus.h"

#include <algorithm>
#include <array>

namespace tavex2 {

namespace {

/// A code with a sentence for the user: what is wrong and what to do.
struct DaqStatusText {
    DaqStatus status;
    std::string_view description;
};

constexpr std::array table{
    DaqStatusText{DaqStatus::Ok, "No error."},
    DaqStatusText{DaqStatus::NoDevice, "No A/D board has this device number. Choose another device number."},
    DaqStatusText{DaqStatus::BadChannelList, "The channel list cannot be used. Correct the list of channels."},
    DaqStatusText{DaqStatus::BadRate, "The board cannot sample at this rate. Choose another rate."},
    DaqStatusText{DaqStatus::BadLimits,
                  "The voltage limits cannot be used. The upper limit must lie above the lower one."},
    DaqStatusText{DaqStatus::BadTrigger, "The start trigger cannot be used. Correct the trigger conditions."},
    DaqStatusText{DaqStatus::BadScanCount,
                  "The trial's length cannot be used. Correct the duration, the rate or the number of repeats."},
    DaqStatusText{DaqStatus::OutOfMemory,
                  "The trial does not fit into memory. Choose a shorter duration, a lower rate or fewer channels."},
    DaqStatusText{DaqStatus::DeviceUnavailable,
                  "The board cannot be opened. Check that it is connected and not used by another program."},
    DaqStatusText{DaqStatus::DeviceRefused, "The board refused the configuration. Change the settings and try again."},
    DaqStatusText{DaqStatus::DeviceVanished,
                  "The board no longer answers. Check its cable and power, then collect again."},
    DaqStatusText{DaqStatus::Overrun,
                  "The board's memory ran over and samples were lost. Lower the rate or the number of channels."},
    DaqStatusText{DaqStatus::NotConfigured, "The board has not been configured. Configure it before starting."},
    DaqStatusText{DaqStatus::Busy, "The board is already running. Stop it first."},
};

} // namespace

std::string_view daqStatusDescription(int code) {
    const auto* const row = std::ranges::find_if(
        table, [code](const DaqStatusText& each) { return static_cast<int>(each.status) == code; });
    return row != table.end() ? row->description : "An error that the board's driver does not describe.";
}

} // namespace tavex2
