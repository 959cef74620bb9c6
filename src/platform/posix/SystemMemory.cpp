#include "platform/SystemMemory.h"

#include <limits>
#include <unistd.h>

namespace tavex2 {

std::uint64_t physicalMemoryBytes() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageBytes = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageBytes <= 0) return std::numeric_limits<std::uint64_t>::max();
    return static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageBytes);
}

} // namespace tavex2
