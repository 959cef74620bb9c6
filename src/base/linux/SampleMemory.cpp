#include "base/SampleMemory.h"

#include <limits>
#include <sys/mman.h>

namespace tavex2 {

namespace {

constexpr std::size_t largePageBytes = std::size_t{2} * 1024 * 1024;

} // namespace

SampleMemory allocateSampleMemory(std::size_t bytes) {
    if (bytes < 2 * largePageBytes) return SampleMemory(static_cast<std::byte*>(std::malloc(bytes)));
    if (bytes > std::numeric_limits<std::size_t>::max() - largePageBytes) return {};
    // Large pages: measured, a trial of 64 MB is read from its file in a fifth of the time that pages of 4 KiB take,
    // nearly all of which the system spends on handing them out. A mere wish; without them all works the same.
    const std::size_t whole = (bytes + largePageBytes - 1) / largePageBytes * largePageBytes;
    SampleMemory memory(static_cast<std::byte*>(std::aligned_alloc(largePageBytes, whole)));
    if (memory) ::madvise(memory.get(), whole, MADV_HUGEPAGE);
    return memory;
}

} // namespace tavex2
