#include "base/SampleMemory.h"

namespace tavex2 {

SampleMemory allocateSampleMemory(std::size_t bytes) {
    return SampleMemory(static_cast<std::byte*>(std::malloc(bytes)));
}

} // namespace tavex2
