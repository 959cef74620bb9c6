#pragma once

#include "platform/SoundOutput.h"

#include <memory>

namespace tavex2 {

/// The system's wave output; one at a time.
std::unique_ptr<SoundOutput> systemSound();

} // namespace tavex2
