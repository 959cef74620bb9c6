#include "platform/SystemMemory.h"

#include "platform/windows/WindowsHeader.h"

#include <limits>

namespace tavex2 {

std::uint64_t physicalMemoryBytes() {
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    return ::GlobalMemoryStatusEx(&status) != 0 ? status.ullTotalPhys : std::numeric_limits<std::uint64_t>::max();
}

} // namespace tavex2
