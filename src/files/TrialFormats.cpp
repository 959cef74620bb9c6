#include "files/TrialFormats.h"

#include "files/LmbLayout.h"
#include "files/StimulusFile.h"
#include "files/TextExport.h"
#include "platform/LocalTime.h"

#include <algorithm>
#include <array>

namespace tavex2 {

namespace {

Result<void> writeLmb(const std::filesystem::path& path, const Trial& trial, const WriteOptions& options) {
    const std::string own = trial.header.Title.trimmed();
    const auto written = WriteLmb(path, trial, own.empty() ? lmbTitle(trial.number, localTimeNow()) : own, options);
    return written ? Result<void>() : written.error();
}

std::uint64_t lmbBytes(int channels, std::int64_t samples) {
    const Result<std::uint64_t> bytes = lmbFileBytes(channels, samples);
    return bytes ? bytes.value() : 0;
}

constexpr std::uint64_t headBytes = 8192; ///< more than the head of any table has: a whole path and 64 columns

/// Rows of so many characters for the time and for each value, separators and line ends included.
std::uint64_t tableBytes(int channels, std::int64_t samples, std::uint64_t time, std::uint64_t value) {
    constexpr std::uint64_t lineEnd = 2;
    return headBytes +
           static_cast<std::uint64_t>(samples) * (time + value * static_cast<std::uint64_t>(channels) + lineEnd);
}

/// "3600.000000" and a tab; "-10.00000" and a tab.
std::uint64_t tabBytes(int channels, std::int64_t samples) {
    return tableBytes(channels, samples, 12, 10);
}

/// Columns of ten characters.
std::uint64_t lmaBytes(int channels, std::int64_t samples) {
    return tableBytes(channels, samples, 10, 10);
}

std::uint64_t plvBytes(int channels, std::int64_t samples) {
    return headBytes + static_cast<std::uint64_t>(samples) * static_cast<std::uint64_t>(channels) * sizeof(double);
}

constexpr std::array<TrialFormat, 4> formats{{{".lmb", writeLmb, lmbBytes},
                                              {".tab", WriteTab, tabBytes},
                                              {".lma", WriteLma, lmaBytes},
                                              {".plv", WritePlv, plvBytes}}};

} // namespace

std::span<const TrialFormat> trialFormats() {
    return formats;
}

const TrialFormat* trialFormat(std::string_view extension) {
    const auto found = std::ranges::find(formats, extension, &TrialFormat::extension);
    return found == formats.end() ? nullptr : &*found;
}

std::string trialFormatNames() {
    std::string names;
    for (const TrialFormat& format : formats) {
        if (!names.empty()) names += &format == &formats.back() ? " or " : ", ";
        names += format.extension;
    }
    return names;
}

} // namespace tavex2
