#pragma once

#include "app/cli/CommandLine.h"

namespace tavex2 {

/// Lists the boards of this machine with their device numbers: how to ask for each, its inputs, rates and ranges.
Result<void> listBoards(bool json, const CommandLineServices& services);

} // namespace tavex2
