#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace tavex2 {

struct FreeSampleMemory {
    void operator()(std::byte* memory) const { std::free(memory); }
};

using SampleMemory = std::unique_ptr<std::byte[], FreeSampleMemory>;

/// Memory for a trial's samples, aligned for any number, left as it comes from the system: its pages are taken when
/// they are first written to. Null when the machine cannot give so many bytes (at least one).
SampleMemory allocateSampleMemory(std::size_t bytes);

} // namespace tavex2
