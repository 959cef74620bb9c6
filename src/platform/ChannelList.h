#pragma once

#include "base/Result.h"

#include <string_view>
#include <vector>

namespace tavex2 {

/// Expands a channel list: comma-separated items, each a channel number or a range "2:5" in ascending order; blanks
/// around numbers, colons and commas are ignored, a channel may be listed twice.
///
/// `inputs` is the number of inputs of the board (channels are 0 .. inputs - 1). At most 64 channels can be listed.
/// The InvalidValue error names the item, its position and what is wrong with it.
Result<std::vector<int>> parseChannelList(std::string_view text, int inputs);

} // namespace tavex2
