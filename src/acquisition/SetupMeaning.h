#pragma once

#include "acquisition/records/AcqSettings.h"
#include "platform/CWAI.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tavex2 {

/// What is known about the disk that trials are saved on.
struct TrialStorage {
    /// Bytes of the file of such a trial; no value when no file can hold it.
    std::function<std::optional<std::uint64_t>(int channels, std::int64_t samples)> fileBytes;
    /// Bytes that are free in a folder; no value when that cannot be told.
    std::function<std::optional<std::uint64_t>(const std::filesystem::path& folder)> freeBytes;
};

/// What settings come to.
struct SetupMeaning {
    /// Samples, size in memory and on disk, trials that the data folder has room for; then what one start does: trials,
    /// time, where the trigger lies, and how long the window stands still for pulses.
    std::string summary;
    /// What stands in the way of a collection, as sentences that name the setup dialog's boxes; empty when nothing
    /// does.
    std::string warnings;
};

/// Works out what a collection with these settings would be. `triggered` says whether it waits for the trigger channel.
/// Nothing is changed and nothing forbidden.
SetupMeaning meaningOf(const AcqSettings& settings, bool triggered, const CWAI& analogInput,
                       const TrialStorage& storage, const std::filesystem::path& dataFolder);

/// A number of bytes for people: "950 bytes", "31.2 kB", "1.5 GB" (powers of a thousand).
std::string sizeText(double bytes);

} // namespace tavex2
