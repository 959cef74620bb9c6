#pragma once

#include <functional>

namespace tavex2 {

/// Called after each channel's block, with the number of channels done; returns whether to go on. May be empty.
using AfterChannel = std::function<bool(int channelsDone, int channels)>;

} // namespace tavex2
