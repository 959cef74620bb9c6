#pragma once

#include <cstdint>

namespace tavex2 {

/// Bytes of memory that this machine has; the largest number when the system does not say.
std::uint64_t physicalMemoryBytes();

} // namespace tavex2
