#pragma once

#include "acquisition/records/Trial.h"
#include "files/FileIO.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace tavex2 {

/// A kind of file that a trial can be written to.
struct TrialFormat {
    std::string_view extension; ///< with its point, in small letters
    Result<void> (*write)(const std::filesystem::path& path, const Trial& trial, const WriteOptions& options);
    /// The most bytes that the file of such a trial can have; 0 for a trial that the format cannot hold.
    std::uint64_t (*mostBytes)(int channels, std::int64_t samples);
};

/// All of them: .lmb, .tab, .lma, .plv. A binary trial file keeps the title that the trial has from its own file, with
/// the number and the time at which it was taken, and gets a new one where it has none.
std::span<const TrialFormat> trialFormats();

/// The format of an extension; null when there is none.
const TrialFormat* trialFormat(std::string_view extension);

/// Their extensions in words: ".lmb, .tab, .lma or .plv".
std::string trialFormatNames();

} // namespace tavex2
