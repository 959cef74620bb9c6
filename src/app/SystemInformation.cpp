#include "app/SystemInformation.h"

#include "app/Version.h"
#include "platform/SystemMemory.h"

#include <thread>

namespace tavex2 {

std::string systemInformation(const SystemFacts& facts) {
    constexpr std::uint64_t mebibyte = std::uint64_t{1024} * 1024;
    std::string text = std::string("Tavex2 ") + versionText + "\n";
    text += "System: " + facts.operatingSystem + "\n";
    text += "Toolkit: " + facts.toolkit + "\n";
    text += "Processors: " + std::to_string(std::thread::hardware_concurrency()) + "\n";
    text += "Memory: " + std::to_string(physicalMemoryBytes() / mebibyte) + " MiB\n";
    for (std::size_t i = 0; i < facts.boards.size(); ++i)
        text += "Device " + std::to_string(i + 1) + ": " + facts.boards[i] + "\n";
    return text + "Settings: " + facts.settingsFile + "\n";
}

} // namespace tavex2
