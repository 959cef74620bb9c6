#pragma once

#include "acquisition/records/AcqSettings.h"
#include "base/Result.h"

#include <string>
#include <vector>

namespace tavex2 {

/// Applies settings given as NAME=VALUE, in order. The error names the argument.
Result<void> applySettings(AcqSettings& settings, const std::vector<std::string>& arguments);

} // namespace tavex2
